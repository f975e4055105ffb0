#include "timeeditctrl.h"

#include "dialogtemplate.h"

const char* const TimeEditCtrl::ClassName = "ToolkitTimeEdit";

namespace {
const bool g_registered = RegisterControlClass(TimeEditCtrl::ClassName, [](QWidget* parent, const DialogControl&) -> QWidget* {
    return new TimeEditCtrl(parent);
});
} // namespace

TimeEditCtrl::TimeEditCtrl(QWidget* parent) : QTimeEdit(parent)
{
    (void)g_registered;
    setDisplayFormat(QStringLiteral("HH:mm:ss"));
    setButtonSymbols(QAbstractSpinBox::NoButtons);
}

TimeEditCtrl::~TimeEditCtrl() = default;

void TimeEditCtrl::SetTime(int hour, int minute, int second) { setTime(QTime(hour, minute, second)); }
