#include "mergelink/mergepatientsdlg.h"
#include "mergelink/patientcomparison.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/dialogfooter.h"
#include "boundary/dialogheader.h"
#include "boundary/resource.h"
#include "mergelink/comparisonlistctrl.h"
#include "mergelink/mergepatientsdlgimpl.h"

#include "auditandlogparams.h"
#include "hfdlg.h"
#include "xpbutton.h"
#include "messagebox.h"
#include "patientdetailrecord.h"
#include "session.h"
#include "stringtable.h"

#include <ace/Log_Msg.h>

#include <exception>

DialogTemplate MergePatientsDlg::MakeTemplate()
{
    BRAVIK_MANAGE_STATE();
    return PatientComparison::FrameTemplate(IDS_MERGE_CAPTION, 432);
}

void FitFooterButton(XPButton& button)
{
    // "Merge Patients" is longer than the toolkit's standard button.
    const int wanted = button.sizeHint().width();
    if (button.IsCreated() && wanted > button.width())
        button.resize(wanted, button.height());
}

MergePatientsDlg::MergePatientsDlg(DialogHeader* header, DialogFooter* footer, MergePatientsDlgImpl* panel,
                                   CWnd* parent)
    : OstrelDlg(MakeTemplate(), parent), m_pHeader(header), m_pFooter(footer), m_pImpl(panel)
{
    setObjectName(QStringLiteral("MergePatientsDlg"));
    // Registered once, under its exact name, before the panel can send it.
    MergePatientsDlgImpl::ToggleMergeMessage();
    if (m_pFooter)
        m_pFooter->SetOwner(this);
}

MergePatientsDlg::~MergePatientsDlg()
{
    // The panel, header and footer are children of the frame by now; take
    // them out before deleting them so the frame (deleted by the base) does
    // not delete them a second time.
    for (QWidget* w : std::initializer_list<QWidget*>{m_pImpl, m_pHeader, m_pFooter})
        if (w)
            w->setParent(nullptr);
    delete m_pImpl;
    delete m_pFooter;
    delete m_pHeader;
}

BOOL MergePatientsDlg::OnInitDialog()
{
    BRAVIK_MANAGE_STATE();
    OstrelDlg::OnInitDialog();
    HFDlg* frame = GetFrame();
    frame->setEnabled(true);
    frame->ShowWindow(SW_SHOW);

    if (m_pHeader) {
        m_pHeader->SetHeight(BaseTabHeader::DEFAULT_HEIGHT - 9);
        frame->SetHeader(m_pHeader);
        m_pHeader->setFont(font());
        m_pHeader->m_clrBackground = 0xFFFFFF;
        m_pHeader->m_clrText = 0;
    }

    if (m_pFooter) {
        m_pFooter->SetOKText(LoadString(IDS_MERGE_BUTTON));
        m_pFooter->SetCancelText(LoadString(IDS_CANCEL));
        frame->SetFooter(m_pFooter);
        FitFooterButton(m_pFooter->GetOKButton());
        // Tab moves on into the footer's buttons: Qt's focus chain already
        // enters child windows, as the control-parent style did.
        m_pFooter->RecalcLayout(CRect(0, 0, m_pFooter->width(), m_pFooter->height()));
        // Nothing is merged before every choice is made.
        m_pFooter->GetOKButton().EnableWindow(FALSE);
    }

    if (m_pImpl) {
        m_pImpl->Create(CRect(), frame);
        frame->SetBody(m_pImpl);
    }
    frame->RecalcLayout();
    if (m_pFooter)
        m_pFooter->RecalcLayout(CRect(0, 0, m_pFooter->width(), m_pFooter->height()));

    // The user starts in the comparison, where the choices are made.
    if (m_pImpl && m_pImpl->GetFieldList())
        m_pImpl->GetFieldList()->setFocus();
    AuditPatients();
    return FALSE;
}

void MergePatientsDlg::AuditPatients()
{
    if (!m_pImpl)
        return;
    for (const PatientDetailRecord* record : {m_pImpl->GetRecord1(), m_pImpl->GetRecord2()}) {
        if (!record)
            continue;
        try {
            const AuditAndLogParams params(record->GetPatientKey().c_str(),
                                           AuditAndLogParams::PATIENT_SHOWN_FOR_MERGE_OR_LINK);
            Session::Instance().AuditAndLog(params, "");
        } catch (const std::exception& e) {
            // An audit trail that cannot be written must not keep the user out.
            ACE_LOG_MSG->file(__FILE__);
            ACE_LOG_MSG->linenum(__LINE__);
            ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d: %s\n"), "MergePatientsDlg::OnInitDialog",
                       __LINE__, e.what()));
        }
    }
}

void MergePatientsDlg::OnOK()
{
    BRAVIK_MANAGE_STATE();
    if (AfxMessageBox(IDS_MERGE_CONFIRM, MB_YESNO) == IDYES)
        EndDialog(IDOK);
}

void MergePatientsDlg::done(int result)
{
    if (m_pImpl)
        m_pImpl->OnDestroy();
    OstrelDlg::done(result);
}

LRESULT MergePatientsDlg::OnRegisteredMessage(UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg == MergePatientsDlgImpl::ToggleMergeMessage())
        return OnToggleMerge(wParam, lParam);
    return OstrelDlg::OnRegisteredMessage(msg, wParam, lParam);
}

LRESULT MergePatientsDlg::OnToggleMerge(WPARAM, LPARAM)
{
    if (!m_pImpl || !m_pFooter || !m_pFooter->GetOKButton().IsCreated())
        return 1;
    m_pFooter->GetOKButton().EnableWindow(m_pImpl->IsComplete() ? TRUE : FALSE);
    return 1;
}

const PatientDetailRecord& MergePatientsDlg::GetTargetPatient() const { return m_pImpl->GetTargetPatient(); }

const CString& MergePatientsDlg::GetSourcePatientKey() const { return m_pImpl->GetSourcePatientKey(); }

const std::vector<LinkedPatientInfo*>& MergePatientsDlg::GetLinkedPatientSelection() const
{
    return m_pImpl->GetLinkedPatientSelection();
}
