#pragma once

// What the exam dialog tests share: a real archive installed into the
// session (with a patient, exam codes, modifiers, locations, resources and
// referring physicians), the picker control registered as the host does,
// the scripted user and log capture; and forms that act on a running exam
// dialog and on a picker dialog as their user.

#include <archivefixture.h>

#include "logcapture.h"
#include "scripteduser.h"

#include "boundary/resource.h"

#include "cstring.h"
#include "examdataset.h"

#include <QString>

#include <memory>
#include <string>
#include <utility>
#include <vector>

class CDialog;
class ExamDetailsImplDlg;
class ExamDlg;
class Picker;
class PickerDlg;

class ExamFixture : public ArchiveFixture
{
protected:
    void SetUp() override;
    void TearDown() override;

    // An exam saved through the service (so it reads back as the dialog loads it).
    std::string SavedExam(const std::string& accession, const std::string& patient = std::string(),
                          bool withCode = true);
    ExamDataSet Stored(const std::string& examKey);
    std::vector<std::pair<int, std::string>> AuditRows();
    void LinkExams(const std::string& a, const std::string& b);
    // The session's services read dictionaries once: after a test changed
    // them, the archive is installed again.
    void Reinstall();

    std::string m_patient;       // NORTH, "Smith, Ann", female, born 1970-01-01
    std::string m_otherPatient;  // NORTH, "Jones, Bob"
    std::string m_ctHead;        // exam code "CTHEAD"
    std::string m_doctor;        // referring physician "PRV1" House, Gregory
    std::string m_modifier, m_location, m_resource;

    std::unique_ptr<ScriptedUser> user;
    std::unique_ptr<LogCapture> log;
};

// Acts on a running exam dialog.
class ExamForm
{
public:
    explicit ExamForm(CDialog& dlg);

    ExamDlg& Dlg() const { return m_dlg; }
    ExamDetailsImplDlg& Info() const;
    ExamDataSet& Exam() const;

    std::vector<CString> TabTitles() const;
    CString ActiveTab() const;
    void Tab(UINT titleId) const;

    CString Text(int id) const;
    bool Enabled(int id) const;
    bool Shown(int id) const;
    Picker* PickerAt(int id) const;

    void TypeAccession(const QString& text) const;
    void Generate() const;
    void ChoosePriority(const QString& itemText) const;
    void TypeInPicker(int id, const QString& text) const;
    // Enter in the picker's field: its typed text is resolved.
    void EnterInPicker(int id) const;
    // F4 in the picker's field: the chooser opens (script it first).
    void Pick(int id) const;
    void TypeText(int id, const QString& text) const;
    // The Links tab's "Remove From Link".
    void RemoveFromLink() const;

    bool OKEnabled() const;
    void ClickOK() const;
    void Cancel() const;
    CString ExamLine() const;
    CString PatientLine() const;

private:
    ExamDlg& m_dlg;
};

// Acts on a running picker dialog.
class PickerForm
{
public:
    explicit PickerForm(CDialog& dlg);

    PickerDlg& Dlg() const { return m_dlg; }
    CString SearchText() const;
    CString Caption() const;
    std::vector<CString> FirstColumn() const;
    int SelectedRow() const;
    CString Note() const;

    void Type(const QString& text) const;
    void Replace(const QString& text) const;
    void Key(int key) const;
    void Enter() const { Key(0x01000004); }  // Qt::Key_Return
    void Escape() const;

private:
    PickerDlg& m_dlg;
};

// Scripts for the next picker dialog.
ScriptedUser::DialogScript ChooseInPicker(const QString& search, int downPresses = 0);
ScriptedUser::DialogScript CancelPicker();
