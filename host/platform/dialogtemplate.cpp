#include "dialogtemplate.h"

#include <QFontMetrics>

#include <map>
#include <mutex>

const char* ControlKindName(ControlKind kind)
{
    switch (kind) {
    case ControlKind::Static: return "Static";
    case ControlKind::Edit: return "Edit";
    case ControlKind::MultiLineEdit: return "MultiLineEdit";
    case ControlKind::PushButton: return "PushButton";
    case ControlKind::DefPushButton: return "DefPushButton";
    case ControlKind::CheckBox: return "CheckBox";
    case ControlKind::RadioButton: return "RadioButton";
    case ControlKind::ComboDropDownList: return "ComboDropDownList";
    case ControlKind::ComboDropDown: return "ComboDropDown";
    case ControlKind::GroupBox: return "GroupBox";
    case ControlKind::ListBox: return "ListBox";
    case ControlKind::Custom: return "Custom";
    }
    return "unknown";
}

DialogUnits DialogUnits::FromFont(const QFont& font)
{
    const QFontMetrics fm(font);
    return DialogUnits{fm.averageCharWidth(), fm.height()};
}

CRect DialogUnits::MapRect(const CRect& dlu) const
{
    return CRect(ToPixelsX(dlu.left), ToPixelsY(dlu.top), ToPixelsX(dlu.right), ToPixelsY(dlu.bottom));
}

CRect DialogUnits::MapControl(const DialogControl& c) const
{
    const int x = ToPixelsX(c.x);
    const int y = ToPixelsY(c.y);
    return CRect(x, y, x + ToPixelsX(c.cx), y + ToPixelsY(c.cy));
}

namespace {

std::mutex& hookMutex()
{
    static std::mutex m;
    return m;
}

DialogTemplatePreprocessor& hook()
{
    static DialogTemplatePreprocessor h;
    return h;
}

std::map<std::string, ControlFactory>& controlClasses()
{
    static std::map<std::string, ControlFactory> classes;
    return classes;
}

} // namespace

DialogTemplatePreprocessor SetDialogTemplatePreprocessor(DialogTemplatePreprocessor h)
{
    std::lock_guard lock(hookMutex());
    DialogTemplatePreprocessor previous = std::move(hook());
    hook() = std::move(h);
    return previous;
}

void PreprocessDialogTemplate(DialogTemplate& tpl)
{
    DialogTemplatePreprocessor h;
    {
        std::lock_guard lock(hookMutex());
        h = hook();
    }
    if (h)
        h(tpl);
}

bool RegisterControlClass(const char* className, ControlFactory factory)
{
    if (!className || !*className || !factory)
        return false;
    std::lock_guard lock(hookMutex());
    return controlClasses().emplace(className, std::move(factory)).second;
}

bool UnregisterControlClass(const char* className)
{
    std::lock_guard lock(hookMutex());
    return className && controlClasses().erase(className) > 0;
}

bool IsControlClassRegistered(const char* className)
{
    std::lock_guard lock(hookMutex());
    return className && controlClasses().count(className) > 0;
}

// Used by the dialog builder.
ControlFactory FindControlClass(const char* className)
{
    std::lock_guard lock(hookMutex());
    if (!className)
        return {};
    const auto it = controlClasses().find(className);
    return it == controlClasses().end() ? ControlFactory{} : it->second;
}
