#include "preferences.h"

Preferences& Preferences::Instance()
{
    static Preferences preferences;
    return preferences;
}

void Preferences::Reset()
{
    *this = Preferences();
}
