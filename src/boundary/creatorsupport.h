#pragma once

// What the creators share: copying a creator copies the record it owns,
// never shares it; a dialog that could not run is logged, never thrown to
// the host.

#include <ace/Log_Msg.h>

namespace TavCreator {

template <class T>
T* CopyOf(const T* record)
{
    return record ? new T(*record) : nullptr;
}

// target becomes a copy of source (its earlier record freed).
template <class T>
void AssignCopy(T*& target, const T* source)
{
    if (target == source)
        return;
    T* copy = CopyOf(source);
    delete target;
    target = copy;
}

// Logs why the creator's dialog could not run (file and line of the caller).
inline void LogDialogCouldNotRun(const char* function, const char* file, int line, const char* what)
{
    ACE_LOG_MSG->file(file);
    ACE_LOG_MSG->linenum(line);
    ACE_DEBUG((LM_DEBUG, ACE_TEXT("Function: %s, Line: %d, the dialog could not run: %s\n"), function, line, what));
}

} // namespace TavCreator
