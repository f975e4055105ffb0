#pragma once

// CreatePatientAndExamDlg: registers a walk-in patient and the ordered exam
// together. Two tabs: "Patient" (the demographics page) and "Exam" (the exam
// details page), on copies of the records it is given. OK validates both
// pages, then saves the patient (created the first time, modified once it
// has its key) and creates the exam for it; an exam that cannot be created
// leaves the dialog open with the patient in the archive, and a Cancel from
// there deletes that patient again (reason "User cancelled after create").
//
// Run by TavCreator::CreatePatientAndExamDlgCreator.

#include "bravik_export.h"

#include "boundary/dialogfooter.h"

#include "basetabheader.h"
#include "controlparentmodaldlg.h"
#include "cstring.h"
#include "publisher.h"

#include <memory>

class ExamDataSet;
class ExamDetailsPage;
class HFTabbedDlg;
class PatientDemographicsPage;
class PatientDetailRecord;

class BRAVIK_EXPORT CreatePatientAndExamDlg : public ControlParentModalDlg, public Subscriber<long, long>
{
    Q_OBJECT
public:
    // Three lines beside the icon: "MRN: ..." in bold, the patient, the exam.
    class Header : public BaseTabHeader
    {
    public:
        Header();
        void SetLines(const CString& mrn, const CString& patient, const CString& exam);
        const CString& GetMRNLine() const { return m_lines[0]; }
        const CString& GetPatientLine() const { return m_lines[1]; }
        const CString& GetExamLine() const { return m_lines[2]; }

    protected:
        void OnPaint(QPainter& dc) override;

    private:
        CString m_lines[3];
    };
    // OK and Cancel run the dialog's own OK and Cancel.
    class Footer : public DialogFooter
    {
    public:
        explicit Footer(CreatePatientAndExamDlg* owner);

    protected:
        void OnCancel() override;

    private:
        CreatePatientAndExamDlg* m_pDlg;
    };

    static constexpr int kWidth = 830;
    static constexpr int kHeight = 700;

    CreatePatientAndExamDlg(const PatientDetailRecord& patient, const ExamDataSet& exam, CWnd* parent);
    ~CreatePatientAndExamDlg() override;

    const PatientDetailRecord& GetPatient() const { return *m_pPatient; }
    const ExamDataSet& GetExamDataSet() const { return *m_pExam; }
    // Empty until an OK of this dialog created the patient.
    const CString& GetCreatedPatientKey() const { return m_strCreatedPatientKey; }

    HFTabbedDlg* GetFrame() const { return m_pFrame; }
    Header* GetHeader() const { return m_pHeader; }
    Footer* GetFooter() const { return m_pFooter; }
    PatientDemographicsPage* GetPatientPage() const { return m_pPatientPage; }
    ExamDetailsPage* GetExamPage() const { return m_pExamPage; }

    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    void OnPublish(Publisher<long, long>* source, long kind, long id, const char* text) override;

protected:
    void OnSize(UINT type, int cx, int cy) override;

private:
    void CreateFrame();
    void ApplyBands();
    void AddPages();
    void UpdateHeader();
    void FollowPatientOrganization();
    bool SavePatient();
    bool CreateExam();
    void ShowServiceError(UINT messageId, const char* identifier, const char* reason);

    HFTabbedDlg* m_pFrame;
    Header* m_pHeader;
    Footer* m_pFooter;
    PatientDemographicsPage* m_pPatientPage = nullptr;
    ExamDetailsPage* m_pExamPage = nullptr;
    std::unique_ptr<PatientDetailRecord> m_pPatient;
    std::unique_ptr<ExamDataSet> m_pExam;
    CString m_strCreatedPatientKey;
};
