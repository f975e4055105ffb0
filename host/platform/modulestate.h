#pragma once

// Module resources and the switch between them. Each module (the host, and
// every loadable module) has one ModuleState holding its string table, its
// dialog templates by id and its header icon. One state is current at a time
// (the host's by default); LoadString, AfxMessageBox(id), CDialog(templateId)
// and the icon lookups read the current one.
//
// Every exported entry point of a module switches to its own resources first:
//   int Creator::DisplayModal() {
//       ModuleResourceScope scope(ModuleStateOfBravik());
//       ...
//   }
// The scope restores the caller's state on every exit, exceptions included,
// and scopes nest. User-interface thread only.

#include "bravik_platform_export.h"
#include "cstring.h"
#include "dialogtemplate.h"
#include "stringtable.h"
#include "windefs.h"

#include <QIcon>
#include <QPixmap>

#include <map>
#include <string>

class BRAVIK_PLATFORM_EXPORT ModuleState
{
public:
    // name: for diagnostics; appName: the caption of AfxMessageBox boxes while
    // this module is current (empty: the application's name).
    explicit ModuleState(const char* name, const char* translationContext = nullptr, const char* appName = "");
    ModuleState(const ModuleState&) = delete;
    ModuleState& operator=(const ModuleState&) = delete;

    const char* Name() const { return m_name.c_str(); }
    CString AppName() const;
    void SetAppName(const char* appName) { m_appName = appName ? appName : ""; }

    StringTable& Strings() { return m_strings; }
    const StringTable& Strings() const { return m_strings; }

    void AddTemplate(UINT id, const DialogTemplate& tpl);
    const DialogTemplate* FindTemplate(UINT id) const;

    void SetIcon(const QIcon& icon) { m_icon = icon; }
    QIcon Icon() const { return m_icon; }
    // The icon drawn at size x size pixels.
    QPixmap IconPixmap(int size = 32) const;

private:
    std::string m_name;
    std::string m_appName;
    StringTable m_strings;
    std::map<UINT, DialogTemplate> m_templates;
    QIcon m_icon;
};

// The host's own state: current when no scope is active.
BRAVIK_PLATFORM_EXPORT ModuleState& HostModuleState();
BRAVIK_PLATFORM_EXPORT ModuleState& CurrentModuleState();

class BRAVIK_PLATFORM_EXPORT ModuleResourceScope
{
public:
    explicit ModuleResourceScope(ModuleState& state);
    ~ModuleResourceScope();
    ModuleResourceScope(const ModuleResourceScope&) = delete;
    ModuleResourceScope& operator=(const ModuleResourceScope&) = delete;

private:
    ModuleState* m_previous;
};
