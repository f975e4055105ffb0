#pragma once

// The workstation's commands on the selected patient, exam or study. Each is
// one entry of WorkstationActions() (workstationactions.cpp); the main window
// turns every entry into a menu item, a toolbar button and a shortcut and
// enables it when what it needs is selected. To add a dialog: add one entry.

#include <QKeySequence>
#include <QString>

#include "userrights.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class ExamDataSet;
class PatientDetailRecord;
class QWidget;
class StudyRecord;

// What the user has selected when an action runs.
struct ActionContext
{
    QWidget* parent = nullptr;
    const PatientDetailRecord* patient = nullptr;
    const ExamDataSet* exam = nullptr;
    const StudyRecord* study = nullptr;
    // The action changed the archive: search again.
    std::function<void()> refresh;
    // A line for the status bar.
    std::function<void(const QString&)> status;
    // Shows the patient in the browser and selects it (after a save).
    std::function<void(const PatientDetailRecord&)> showPatient;
    // After a refresh: selects the exam with this key in the exam list.
    std::function<void(const char* examKey)> selectExam;
};

struct WorkstationAction
{
    enum class Needs { Nothing, Patient, Exam, Study };

    QString id;     // objectName of the QAction
    QString menu;   // the menu it is listed in: "Patient", "Exam", "Study" ...
    QString text;   // with & for the mnemonic and ... when it opens a dialog
    QKeySequence shortcut;
    Needs needs = Needs::Nothing;
    std::function<void(ActionContext&)> run;
    // The right the user needs in the selected patient's organization; the
    // command is disabled, its tooltip saying why, where the user lacks it.
    std::optional<UserRights::eRIGHT> right = std::nullopt;
};

// Why the user may not run `action` on the selected patient's records (empty
// when allowed): one sentence for the command's tooltip.
QString RightRefusal(const WorkstationAction& action, const PatientDetailRecord* patient);

std::vector<WorkstationAction> WorkstationActions();
