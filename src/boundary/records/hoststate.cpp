#include "hoststate.h"

#include "errormanager.h"
#include "localefunctions.h"
#include "options.h"
#include "preferences.h"
#include "session.h"
#include "sitepolicy.h"
#include "worklistutils.h"

void ResetHostState()
{
    Session::Instance().Reset();
    Preferences::Instance().Reset();
    Options::Reset();
    SitePolicy::Reset();
    Locale::Reset();
    WorkListUtils::Reset();
    Framework::ErrorManager::Instance().ResetCounters();
}
