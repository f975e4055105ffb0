#include "reasons/detachstudyparamdlg.h"

#include "boundary/dialogfooter.h"
#include "boundary/resource.h"
#include "reasons/examdeleteparamdlgimpl.h"

#include "dictionaryservice.h"
#include "preferences.h"

#include "messagebox.h"
#include "stringtable.h"

DetachStudyParamDlg::DetachStudyParamDlg(const CString& headerText, const CString& accessionNumber, CWnd* parent)
    : ReasonParamDlg(headerText, LoadString(IDS_ACCESSION_PREFIX) + accessionNumber, parent)
{
}

DetachStudyParamDlg::~DetachStudyParamDlg() = default;

BOOL DetachStudyParamDlg::OnInitDialog()
{
    ReasonParamDlg::OnInitDialog();
    SetWindowText(LoadString(IDS_DETACH_STUDY_CAPTION));

    CreateFrame();
    ApplyHeader();

    DictionaryService* dictionaries = Dictionaries();
    CreatePanel(dictionaries ? dictionaries->GetDetachStudyReasonDictionary() : NoReasons());

    m_pFooter->SetOKText(LoadString(IDS_DETACH_BUTTON));
    m_pFooter->SetCancelText(LoadString(IDS_CANCEL));
    ApplyFooter();

    ShowFrame();
    m_pImpl->ShowDeleteStudies(false);

    LayOutFrame();
    m_bValidate = true;
    return TRUE;
}

void DetachStudyParamDlg::OnOK()
{
    const UINT question =
        Preferences::Instance().DetachAnnotationWarning() ? IDS_DETACH_ANNOTATION_WARNING : IDS_DETACH_CONFIRM;
    if (AfxMessageBox(question, MB_YESNO) == IDYES)
        ReasonParamDlg::OnOK();
    else
        CloseAsCancelled();
}
