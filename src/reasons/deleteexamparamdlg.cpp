#include "reasons/deleteexamparamdlg.h"

#include "boundary/dialogfooter.h"
#include "boundary/resource.h"
#include "reasons/examdeleteparamdlgimpl.h"

#include "dictionaryservice.h"
#include "productconfiguration.h"

#include "messagebox.h"
#include "stringtable.h"

DeleteExamParamDlg::DeleteExamParamDlg(const CString& headerText, const CString& accessionNumber,
                                       TavCreator::eDLGCODE mode, bool studiesDeletable, CWnd* parent)
    : ReasonParamDlg(headerText, LoadString(IDS_ACCESSION_PREFIX) + accessionNumber, parent),
      m_eMode(mode),
      m_bStudiesDeletable(studiesDeletable)
{
}

DeleteExamParamDlg::~DeleteExamParamDlg() = default;

void DeleteExamParamDlg::SetDeleteStudiesFlg(int flag) { m_pImpl->SetDeleteStudiesFlg(flag); }

int DeleteExamParamDlg::GetDeleteStudiesFlg() const { return m_pImpl->GetDeleteStudiesFlg(); }

BOOL DeleteExamParamDlg::OnInitDialog()
{
    ReasonParamDlg::OnInitDialog();

    // A mode the host should not pass gets neither caption nor reasons.
    const std::vector<DictionaryRecord*>* reasons = &NoReasons();
    DictionaryService* dictionaries = Dictionaries();
    if (m_eMode == TavCreator::DELETE_EXAM) {
        SetWindowText(LoadString(IDS_DELETE_EXAM_CAPTION));
        if (dictionaries)
            reasons = &dictionaries->GetDeleteExamReasonDictionary();
    } else if (m_eMode == TavCreator::CANCEL_EXAM) {
        SetWindowText(LoadString(IDS_CANCEL_EXAM_CAPTION));
        if (dictionaries)
            reasons = &dictionaries->GetCancelExamReasonDictionary();
    }

    CreateFrame();
    ApplyHeader();
    CreatePanel(*reasons);

    if (m_eMode == TavCreator::CANCEL_EXAM) {
        m_pImpl->ShowDeleteStudies(false);
        m_pImpl->SetNoteText(LoadString(IDS_REASON_FOR_CANCELLATION));
    } else {
        if (!ProductConfiguration::Instance().StudyDeletionEnabled())
            m_pImpl->ShowDeleteStudies(false);
        else if (!m_bStudiesDeletable)
            // Shown but fixed: the creator's state is still what comes back.
            m_pImpl->EnableDeleteStudies(false);
        m_pFooter->SetOKText(LoadString(IDS_DELETE_BUTTON));
        m_pImpl->SetNoteText(LoadString(IDS_REASON_FOR_DELETION));
    }

    m_pFooter->SetCancelText(LoadString(IDS_CANCEL));
    ApplyFooter();
    ShowFrame();
    LayOutFrame();
    m_bValidate = true;
    return TRUE;
}

void DeleteExamParamDlg::OnOK()
{
    if (m_eMode != TavCreator::DELETE_EXAM) {
        ReasonParamDlg::OnOK();
        return;
    }
    if (AfxMessageBox(IDS_DELETE_EXAM_CONFIRM, MB_YESNO) == IDYES)
        ReasonParamDlg::OnOK();
    else
        CloseAsCancelled();
}
