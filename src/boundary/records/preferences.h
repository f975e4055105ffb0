#pragma once

#include "bravik_records_export.h"

// The logged-in user's preferences.
class BRAVIK_RECORDS_EXPORT Preferences
{
public:
    static Preferences& Instance();

    // Warn that annotations are lost before a study is detached.
    bool DetachAnnotationWarning() const { return m_detachAnnotationWarning; }
    void SetDetachAnnotationWarning(bool v) { m_detachAnnotationWarning = v; }

    void Reset();

private:
    Preferences() = default;

    bool m_detachAnnotationWarning = false;
};
