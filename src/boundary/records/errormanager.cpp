#include "errormanager.h"

namespace Framework {

ErrorManager& ErrorManager::Instance()
{
    static ErrorManager manager;
    return manager;
}

void ErrorManager::CommunicationSuccess()
{
    ++m_successes;
}

void ErrorManager::CommunicationFailure()
{
    ++m_failures;
}

void ErrorManager::ResetCounters()
{
    m_successes = 0;
    m_failures = 0;
}

} // namespace Framework
