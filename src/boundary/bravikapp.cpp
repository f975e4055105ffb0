#include "boundary/bravikapp.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/cdlgoccmanager.h"
#include "boundary/resource.h"

#include "coccmanager.h"
#include "screen.h"
#include "stringtable.h"

#include <new>

namespace {
// Constructed when the module is loaded, like any module's application.
CBravikApp theApp;
} // namespace

CBravikApp& BravikApp() { return theApp; }

CBravikApp::CBravikApp() : UIWinApp("Bravik") {}

CBravikApp::~CBravikApp()
{
    delete m_pDlgOccManager;
}

BOOL CBravikApp::InitInstance()
{
    BRAVIK_MANAGE_STATE();
    InitializeResources(&BravikModuleState());
    BaseWinApp::InitInstance();

    // A second start replaces the manager of the first.
    if (m_pDlgOccManager) {
        AfxEnableControlContainer(nullptr);
        delete m_pDlgOccManager;
        m_pDlgOccManager = nullptr;
    }

    const int density = GetScreenLogicalDpiX();
    if (density != -1 && density >= 97)
        m_pDlgOccManager = new (std::nothrow) CDlgOccManager;
    // Null selects the platform's default manager, which leaves templates alone.
    AfxEnableControlContainer(m_pDlgOccManager);
    return TRUE;
}

int CBravikApp::ExitInstance()
{
    BRAVIK_MANAGE_STATE();
    if (m_pDlgOccManager && AfxGetOccManager() == m_pDlgOccManager)
        AfxEnableControlContainer(nullptr);
    return UIWinApp::ExitInstance();
}

CString CBravikApp::GetUnlinkPatientConfirmationMsg()
{
    BRAVIK_MANAGE_STATE();
    return LoadString(IDS_UNLINK_PATIENT_CONFIRM);
}

UINT CBravikApp::GetToolTipDisplayTime() const { return 5000; }
DWORD CBravikApp::UseFlatButtons() const { return m_dwUIFlags & UIF_FLAT_BUTTONS; }
DWORD CBravikApp::UseGradientHeaders() const { return m_dwUIFlags & UIF_GRADIENT_HEADERS; }
DWORD CBravikApp::UseStripedLists() const { return m_dwUIFlags & UIF_STRIPED_LISTS; }
DWORD CBravikApp::UseHotTracking() const { return m_dwUIFlags & UIF_HOT_TRACKING; }
DWORD CBravikApp::UseKeyboardCues() const { return m_dwUIFlags & UIF_KEYBOARD_CUES; }
DWORD CBravikApp::UseHeaderIcons() const { return m_dwUIFlags & UIF_HEADER_ICONS; }
