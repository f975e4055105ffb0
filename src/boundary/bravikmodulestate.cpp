#include "boundary/bravikmodulestate.h"

#include "boundary/modulestrings.h"
#include "boundary/moduletemplates.h"

#include <QGuiApplication>
#include <QIcon>

namespace {

void loadIconOnce(ModuleState& state)
{
    // Images need the GUI application; the first call made after it exists
    // loads the icon.
    if (state.Icon().isNull() && QGuiApplication::instance())
        state.SetIcon(QIcon(QStringLiteral(":/bravik/headericon.png")));
}

} // namespace

ModuleState& BravikModuleState()
{
    static ModuleState state("bravik", BRAVIK_TRANSLATION_CONTEXT);
    static const bool filled = [] {
        AddModuleStrings(state.Strings());
        AddModuleTemplates(state);
        return true;
    }();
    (void)filled;
    loadIconOnce(state);
    return state;
}

QPixmap LoadHeaderIcon(int size) { return CurrentModuleState().IconPixmap(size); }
