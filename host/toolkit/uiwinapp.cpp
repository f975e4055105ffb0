#include "uiwinapp.h"

UIWinApp::UIWinApp(const char* appName) : BaseWinApp(appName) {}

UIWinApp::~UIWinApp() = default;

UINT UIWinApp::GetToolTipDisplayTime() const { return 3000; }
DWORD UIWinApp::UseFlatButtons() const { return 0; }
DWORD UIWinApp::UseGradientHeaders() const { return 0; }
DWORD UIWinApp::UseStripedLists() const { return 0; }
DWORD UIWinApp::UseHotTracking() const { return 0; }
DWORD UIWinApp::UseKeyboardCues() const { return 0; }
DWORD UIWinApp::UseHeaderIcons() const { return 0; }
