#include "reasons/patientdeleteparamdlg.h"

#include "boundary/dialogfooter.h"
#include "boundary/resource.h"
#include "reasons/examdeleteparamdlgimpl.h"

#include "dictionaryservice.h"

#include "messagebox.h"
#include "stringtable.h"

PatientDeleteParamDlg::PatientDeleteParamDlg(const CString& headerText, const CString& mrn,
                                             bool permanentDeleteAllowed, CWnd* parent)
    : ReasonParamDlg(headerText, LoadString(IDS_MRN_PREFIX) + mrn, parent),
      m_bPermanentDeleteAllowed(permanentDeleteAllowed)
{
}

PatientDeleteParamDlg::~PatientDeleteParamDlg() = default;

int PatientDeleteParamDlg::GetPermanentDelete() const { return m_pImpl->GetPermanentDelete(); }

BOOL PatientDeleteParamDlg::OnInitDialog()
{
    ReasonParamDlg::OnInitDialog();
    SetWindowText(LoadString(IDS_DELETE_PATIENT_CAPTION));
    CreateFrame();
    ApplyHeader();

    DictionaryService* dictionaries = Dictionaries();
    CreatePanel(dictionaries ? dictionaries->GetDeletePatientsReasonDictionary() : NoReasons());

    m_pFooter->SetOKText(LoadString(IDS_DELETE_BUTTON));
    m_pFooter->SetCancelText(LoadString(IDS_CANCEL));
    ApplyFooter();
    ShowFrame();

    m_pImpl->ShowDeleteStudies(false);
    if (m_bPermanentDeleteAllowed)
        m_pImpl->ShowPermanentDelete(true);

    LayOutFrame();
    m_bValidate = true;
    return TRUE;
}

void PatientDeleteParamDlg::OnOK()
{
    // The question depends on the box, so read the controls first (no
    // validation yet: a blank reason is refused only after Yes).
    m_pImpl->ExchangeData(TRUE, false);
    const bool permanent = m_bPermanentDeleteAllowed && m_pImpl->GetPermanentDelete() == BST_CHECKED;
    const UINT question = permanent ? IDS_PERMANENT_DELETE_CONFIRM : IDS_DELETE_PATIENT_CONFIRM;
    if (AfxMessageBox(question, MB_YESNO) == IDYES)
        ReasonParamDlg::OnOK();
    else
        CloseAsCancelled();
}
