#include "cwinapp.h"

#include "modulestate.h"

#include <algorithm>
#include <vector>

namespace {

std::vector<CWinApp*>& registered()
{
    static std::vector<CWinApp*> apps;
    return apps;
}

} // namespace

CWinApp::CWinApp(const char* appName) : m_pszAppName(appName ? appName : ""), m_hInstance(&HostModuleState())
{
    registered().push_back(this);
}

CWinApp::~CWinApp()
{
    auto& apps = registered();
    apps.erase(std::remove(apps.begin(), apps.end(), this), apps.end());
}

BOOL CWinApp::InitInstance() { return TRUE; }

int CWinApp::ExitInstance() { return 0; }

int AfxStartModules()
{
    int failed = 0;
    // A module's start may construct further applications; iterate by index.
    for (size_t i = 0; i < registered().size(); ++i) {
        CWinApp* app = registered()[i];
        if (app->m_started)
            continue;
        app->m_started = true;
        if (!app->InitInstance())
            ++failed;
    }
    return failed;
}

void AfxStopModules()
{
    auto apps = registered();
    for (auto it = apps.rbegin(); it != apps.rend(); ++it) {
        if ((*it)->m_started) {
            (*it)->ExitInstance();
            (*it)->m_started = false;
        }
    }
}

CWinApp* AfxGetApp()
{
    const auto& apps = registered();
    return apps.empty() ? nullptr : apps.front();
}
