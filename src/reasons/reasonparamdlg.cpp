#include "reasons/reasonparamdlg.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/dialogfooter.h"
#include "boundary/resource.h"
#include "reasons/examdeleteparamdlgimpl.h"
#include "reasons/header.h"

#include "dictionaryservice.h"
#include "serviceregistry.h"
#include "session.h"

#include "hfdlg.h"

namespace {

// The frame dialog itself holds no controls: the panel's font sets the units
// so the panel gets exactly its template's size.
DialogTemplate frameTemplate()
{
    return DialogTemplate::EmptyFrame(238, 110, 10);
}

} // namespace

ReasonParamDlg::ReasonParamDlg(const CString& firstText, const CString& secondText, CWnd* parent)
    : ControlParentModalDlg(frameTemplate(), parent),
      m_pFrame(new HFDlg),
      m_pHeader(new Header(firstText, secondText)),
      m_pImpl(new ExamDeleteParamDlgImpl),
      m_pFooter(new DialogFooter(this))
{
    // Client area: the panel at its template size between the two bands.
    const int width = Units().ToPixelsX(Template().cx);
    const int height = m_pHeader->GetHeight() + Units().ToPixelsY(Template().cy) + m_pFooter->GetHeight();
    resize(width, height);
    setMinimumSize(width, height);
}

ReasonParamDlg::~ReasonParamDlg()
{
    // Children of the frame by now; the dialog made them, so it deletes them.
    delete m_pFooter;
    delete m_pImpl;
    delete m_pHeader;
    delete m_pFrame;
}

const CString& ReasonParamDlg::GetReason() const { return m_pImpl->GetReason(); }

DictionaryService* ReasonParamDlg::Dictionaries()
{
    ServiceRegistry* registry = Session::ServiceInstance();
    return registry ? registry->GetDictionaryService() : nullptr;
}

const std::vector<DictionaryRecord*>& ReasonParamDlg::NoReasons()
{
    static const std::vector<DictionaryRecord*> none;
    return none;
}

void ReasonParamDlg::CreateFrame()
{
    CRect client;
    GetClientRect(client);
    m_pFrame->Create(this, client);
}

void ReasonParamDlg::ApplyHeader()
{
    m_pHeader->SetIcon(LoadHeaderIcon());
    m_pFrame->SetHeader(m_pHeader);
}

void ReasonParamDlg::CreatePanel(const std::vector<DictionaryRecord*>& reasons)
{
    m_pImpl->SetReasons(reasons);
    m_pImpl->Create(m_pFrame);
    m_pFrame->SetBody(m_pImpl);
}

void ReasonParamDlg::ApplyFooter()
{
    m_pFrame->SetFooter(m_pFooter);
    m_pFooter->SetOwner(this);
}

void ReasonParamDlg::ShowFrame() { m_pFrame->ShowWindow(SW_SHOW); }

void ReasonParamDlg::LayOutFrame()
{
    CRect client;
    GetClientRect(client);
    HFDlg::PlaceWindow(m_pFrame, client.toQRect());
    m_pFrame->RecalcLayout();
}

void ReasonParamDlg::DoDataExchange(CDataExchange* pDX)
{
    ControlParentModalDlg::DoDataExchange(pDX);
    // Before initialisation made the panel there is nothing to exchange.
    if (!m_pImpl->IsChildDialog())
        return;
    if (!m_pImpl->ExchangeData(pDX->m_bSaveAndValidate, pDX->m_bSaveAndValidate && m_bValidate))
        pDX->Fail();
}

void ReasonParamDlg::OnSize(UINT, int cx, int cy)
{
    if (m_pFrame->IsCreated())
        HFDlg::PlaceWindow(m_pFrame, QRect(0, 0, cx, cy));
}
