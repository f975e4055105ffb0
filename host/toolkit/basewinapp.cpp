#include "basewinapp.h"

#include "colorschema.h"

#include <QGuiApplication>

namespace {
HINSTANCE g_resourceModule = nullptr;
} // namespace

BaseWinApp::BaseWinApp(const char* appName) : CWinApp(appName) {}

BaseWinApp::~BaseWinApp()
{
    if (g_resourceModule == m_hInstance)
        g_resourceModule = nullptr;
}

void BaseWinApp::InitializeResources(HINSTANCE module)
{
    if (!module)
        return;
    m_hInstance = module;
    g_resourceModule = module;
}

HINSTANCE BaseWinApp::ResourceModule() { return g_resourceModule; }

BOOL BaseWinApp::InitInstance()
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return FALSE;
    // The scheme is read by every control; build it before the first paints.
    (void)ColorSchema::Instance();
    return CWinApp::InitInstance();
}
