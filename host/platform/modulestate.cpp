#include "modulestate.h"

#include "qtconvert.h"

#include <QCoreApplication>

namespace {

ModuleState*& current()
{
    static ModuleState* s = nullptr;
    return s;
}

} // namespace

ModuleState::ModuleState(const char* name, const char* translationContext, const char* appName)
    : m_name(name ? name : ""), m_appName(appName ? appName : ""),
      m_strings(translationContext ? translationContext : (name ? name : "Strings"))
{
}

CString ModuleState::AppName() const
{
    if (!m_appName.empty())
        return CString(m_appName);
    return fromQString(QCoreApplication::applicationName());
}

void ModuleState::AddTemplate(UINT id, const DialogTemplate& tpl) { m_templates[id] = tpl; }

const DialogTemplate* ModuleState::FindTemplate(UINT id) const
{
    const auto it = m_templates.find(id);
    return it == m_templates.end() ? nullptr : &it->second;
}

QPixmap ModuleState::IconPixmap(int size) const { return m_icon.pixmap(size, size); }

ModuleState& HostModuleState()
{
    static ModuleState host("host");
    return host;
}

ModuleState& CurrentModuleState()
{
    ModuleState* s = current();
    return s ? *s : HostModuleState();
}

ModuleResourceScope::ModuleResourceScope(ModuleState& state) : m_previous(current())
{
    current() = &state;
}

ModuleResourceScope::~ModuleResourceScope() { current() = m_previous; }
