#include "mergelink/linkpatientsdlg.h"
#include "mergelink/patientcomparison.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/dialogfooter.h"
#include "boundary/dialogheader.h"
#include "boundary/resource.h"
#include "mergelink/linkpatientsdlgimpl.h"
#include "mergelink/mergepatientsdlg.h"

#include "auditandlogparams.h"
#include "colorschema.h"
#include "drawmaster.h"
#include "hfdlg.h"
#include "session.h"
#include "stringtable.h"

#include <ace/Log_Msg.h>

#include <exception>

namespace {
constexpr int kHeaderHeight = 75;
} // namespace

DialogTemplate LinkPatientsDlg::MakeTemplate()
{
    BRAVIK_MANAGE_STATE();
    return PatientComparison::FrameTemplate(IDS_LINK_CAPTION, 380);
}

LinkPatientsDlg::LinkPatientsDlg(const CString& headerText, const PatientDetailRecord* firstPatient,
                                 const PatientDetailRecord* secondPatient, CWnd* parent)
    : ControlParentModalDlg(MakeTemplate(), parent),
      m_pHeader(new DialogHeader()),
      m_pFooter(new DialogFooter(this)),
      m_pFrame(new HFDlg()),
      m_pImpl(new LinkPatientsDlgImpl(firstPatient, secondPatient))
{
    setObjectName(QStringLiteral("LinkPatientsDlg"));
    m_pHeader->SetHeaderText(headerText);
}

LinkPatientsDlg::~LinkPatientsDlg()
{
    // Children of the frame by now: take them out, then delete each once.
    for (QWidget* w : std::initializer_list<QWidget*>{m_pImpl, m_pHeader, m_pFooter})
        w->setParent(nullptr);
    delete m_pHeader;
    delete m_pFooter;
    delete m_pFrame;
    delete m_pImpl;
}

BOOL LinkPatientsDlg::OnInitDialog()
{
    BRAVIK_MANAGE_STATE();
    ControlParentModalDlg::OnInitDialog();
    CRect client;
    GetClientRect(client);

    m_pFrame->Create(this, client);
    m_pFrame->setEnabled(true);
    m_pFrame->ShowWindow(SW_SHOW);

    m_pHeader->SetHeight(kHeaderHeight);
    m_pFrame->SetHeader(m_pHeader);
    m_pHeader->setFont(DrawMaster::GetNormalFont());
    m_pHeader->m_clrBackground = 0xFFFFFF;
    m_pHeader->m_clrText = 0;

    m_pFooter->SetOKText(LoadString(IDS_LINK_BUTTON));
    m_pFooter->SetCancelText(LoadString(IDS_CANCEL));
    m_pFrame->SetFooter(m_pFooter);
    m_pFooter->SetOwner(this);
    FitFooterButton(m_pFooter->GetOKButton());

    m_pImpl->Create(m_pFrame->GetBodyRect(), m_pFrame);
    m_pFrame->SetBody(m_pImpl);
    m_pFrame->RecalcLayout();
    m_pFooter->RecalcLayout(CRect(0, 0, m_pFooter->width(), m_pFooter->height()));

    AuditPatients();
    return FALSE;
}

void LinkPatientsDlg::AuditPatients()
{
    // The link patient first, then the target, as the trail has always read.
    for (const CString* key : {&m_pImpl->GetLinkPatientKey(), &m_pImpl->GetTargetPatientKey()}) {
        try {
            const AuditAndLogParams params(*key, AuditAndLogParams::PATIENT_SHOWN_FOR_MERGE_OR_LINK);
            Session::Instance().AuditAndLog(params, "");
        } catch (const std::exception& e) {
            // An audit trail that cannot be written must not keep the user out.
            ACE_LOG_MSG->file(__FILE__);
            ACE_LOG_MSG->linenum(__LINE__);
            ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d: %s\n"), "LinkPatientsDlg::OnInitDialog", __LINE__,
                       e.what()));
        }
    }
}

void LinkPatientsDlg::OnSize(UINT, int cx, int cy)
{
    if (m_pFrame && m_pFrame->IsCreated())
        HFDlg::PlaceWindow(m_pFrame, QRect(0, 0, cx, cy));
}

const CString& LinkPatientsDlg::GetTargetPatientKey() const { return m_pImpl->GetTargetPatientKey(); }
const CString& LinkPatientsDlg::GetTargetPatientOrgKey() const { return m_pImpl->GetTargetPatientOrgKey(); }
const CString& LinkPatientsDlg::GetLinkPatientKey() const { return m_pImpl->GetLinkPatientKey(); }
const CString& LinkPatientsDlg::GetLinkPatientOrgKey() const { return m_pImpl->GetLinkPatientOrgKey(); }
