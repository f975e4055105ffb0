#pragma once

// ExamDlg: create a new exam for a patient, or edit an existing one. It owns
// the working exam and patient, shows them in its header (the exam line and
// the patient line), keeps OK enabled only while the exam's required data is
// there, and on OK validates its pages in turn and creates or updates the
// exam. Whether it creates or edits is decided by the exam key alone: empty
// creates.
//
// The creator loads the exam (or the patient) before running it and copies
// the working exam once it ended with OK.

#include "bravik_export.h"

#include "boundary/dialogfooter.h"
#include "reasons/header.h"

#include "controlparentmodaldlg.h"
#include "cstring.h"
#include "publisher.h"

#include <memory>

class ExamDataSet;
class ExamDetailsPage;
class HFTabbedDlg;
class HistoryPage;
class LinkedExamsPage;
class PatientDetailRecord;
class ProviderDetailsPage;

class BRAVIK_EXPORT ExamDlg : public ControlParentModalDlg, public Subscriber<long, long>
{
    Q_OBJECT
public:
    // Two lines: the exam ("Accession #: ...") in bold, the patient below.
    class Header : public ReasonDialogs::Header
    {
    public:
        Header() : ReasonDialogs::Header(CString(), CString()) {}
        void SetExamLine(const CString& text) { SetTexts(text, GetSecondText()); }
        void SetPatientLine(const CString& text) { SetTexts(GetFirstText(), text); }
    };
    // OK runs the dialog's OnOK; Cancel ends it at once with 2.
    class Footer : public DialogFooter
    {
    public:
        explicit Footer(CDialog* owner) : DialogFooter(owner) {}
    };

    static constexpr int kWidth = 830;
    static constexpr int kHeight = 700;
    // Longer accession numbers are refused on create (the reason names 16).
    static constexpr int kMaxAccessionLength = 20;

    explicit ExamDlg(CWnd* parent = nullptr);
    ExamDlg(const CString& examKey, CWnd* parent);
    ExamDlg(const CString& patientKey, const CString& examKey, CWnd* parent);
    ~ExamDlg() override;

    // The creator's loads; true on success (and the loaded flag set).
    bool LoadExam();
    bool LoadPatient();

    ExamDataSet& GetExamDataSet() { return *m_pExam; }
    const PatientDetailRecord& GetPatient() const { return *m_pPatient; }
    const CString& GetExamKey() const { return m_strExamKey; }
    const CString& GetPatientKey() const { return m_strPatientKey; }
    bool IsCreateMode() const { return m_strExamKey.IsEmpty(); }

    HFTabbedDlg* GetFrame() const { return m_pFrame; }
    Header* GetHeader() const { return m_pHeader; }
    Footer* GetFooter() const { return m_pFooter; }
    ExamDetailsPage* GetDetailsPage() const { return m_pDetailsPage; }
    ProviderDetailsPage* GetProvidersPage() const { return m_pProvidersPage; }
    HistoryPage* GetHistoryPage() const { return m_pHistoryPage; }
    LinkedExamsPage* GetLinksPage() const { return m_pLinksPage; }

    // The OK rule: accession number and priority present, and the exam code
    // when the details page requires it.
    bool IsComplete() const;

    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnPublish(Publisher<long, long>* source, long first, long second, const char* text) override;

protected:
    void OnSize(UINT type, int cx, int cy) override;

private:
    void CreateFrame();
    void ShowExam();
    void ShowPatient();
    void ApplyBands();
    void AddPages();
    void UpdateExamLine();
    void UpdateOK();
    void AuditEdit();
    bool ValidatePages();
    bool CheckAccessionLength();
    bool Save();
    CString PatientLine() const;

    HFTabbedDlg* m_pFrame;
    Header* m_pHeader;
    Footer* m_pFooter;
    CString m_strExamKey;
    CString m_strPatientKey;
    std::unique_ptr<ExamDataSet> m_pExam;
    std::unique_ptr<PatientDetailRecord> m_pPatient;
    ExamDetailsPage* m_pDetailsPage = nullptr;
    ProviderDetailsPage* m_pProvidersPage = nullptr;
    HistoryPage* m_pHistoryPage = nullptr;
    LinkedExamsPage* m_pLinksPage = nullptr;
    bool m_bPatientLoaded = false;
    bool m_bExamLoaded = false;
};
