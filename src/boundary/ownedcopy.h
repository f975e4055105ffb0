#pragma once

// For creators that own the record they hand back: copying a creator copies
// the record, never shares it.

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

} // namespace TavCreator
