#pragma once

#include "bravik_records_export.h"

namespace Framework {

// Keeps track of the state of server communication. The module tells it when
// an exchange succeeded; it counts the notices so the host (and tests) can see them.
class BRAVIK_RECORDS_EXPORT ErrorManager
{
public:
    static ErrorManager& Instance();

    void CommunicationSuccess();
    void CommunicationFailure();

    int GetCommunicationSuccessCount() const { return m_successes; }
    int GetCommunicationFailureCount() const { return m_failures; }
    void ResetCounters();

private:
    ErrorManager() = default;

    int m_successes = 0;
    int m_failures = 0;
};

} // namespace Framework
