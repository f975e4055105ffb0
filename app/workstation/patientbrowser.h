#pragma once

// The patient browser: search patients by name or MRN, see the chosen
// patient's exams and the chosen exam's studies. The records shown are read
// through the session's services and owned here until the next search.

#include <QWidget>

#include <memory>
#include <vector>

class ExamDataSet;
class PatientDetailRecord;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class StudyRecord;

class PatientBrowser : public QWidget
{
    Q_OBJECT
public:
    // At most this many patients are listed per search.
    static constexpr int kMaxRows = 500;

    explicit PatientBrowser(QWidget* parent = nullptr);
    ~PatientBrowser() override;

    // Runs the search with the texts in the fields; keeps the selected
    // patient and exam selected when they are still there.
    void Search();
    // Like Search, after the archive changed under the selection.
    void Refresh();
    // Searches for the patient (its name and MRN) and selects it.
    void ShowPatient(const PatientDetailRecord& patient);

    const PatientDetailRecord* SelectedPatient() const;
    const ExamDataSet* SelectedExam() const;
    const StudyRecord* SelectedStudy() const;

    int PatientCount() const { return static_cast<int>(m_patients.size()); }
    int ExamCount() const { return static_cast<int>(m_exams.size()); }
    int StudyCount() const { return static_cast<int>(m_studies.size()); }

    QLineEdit* NameEdit() const { return m_name; }
    QLineEdit* MrnEdit() const { return m_mrn; }
    QTreeWidget* PatientList() const { return m_patientList; }
    QTreeWidget* ExamList() const { return m_examList; }
    QTreeWidget* StudyList() const { return m_studyList; }

    void FocusSearch();
    // Selects the listed exam with this key (nothing when it is not listed).
    void SelectExam(const char* examKey);

signals:
    // Enter or a double click on an exam.
    void examActivated();
    void selectionChanged();
    // After each search: how many patients are listed, and whether more matched.
    void searched(int shown, bool more);
    // A service failed: a line for the user.
    void problem(const QString& text);
    // Enter or a double click on a patient.
    void patientActivated();

private:
    void fillPatients();
    void loadExams();
    void loadStudies();

    QLineEdit* m_name;
    QLineEdit* m_mrn;
    QPushButton* m_search;
    QTreeWidget* m_patientList;
    QTreeWidget* m_examList;
    QTreeWidget* m_studyList;
    QLabel* m_examsTitle;
    QLabel* m_studiesTitle;

    std::vector<std::unique_ptr<PatientDetailRecord>> m_patients;
    std::vector<std::unique_ptr<ExamDataSet>> m_exams;
    std::vector<std::unique_ptr<StudyRecord>> m_studies;
};
