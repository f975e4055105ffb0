#include "options.h"

#include <set>

namespace {
std::set<int>& SetOptions()
{
    static std::set<int> options;
    return options;
}
} // namespace

bool Options::IsOptionSet(OptionsType option)
{
    return SetOptions().count(static_cast<int>(option)) != 0;
}

void Options::SetOption(OptionsType option, bool on)
{
    if (on)
        SetOptions().insert(static_cast<int>(option));
    else
        SetOptions().erase(static_cast<int>(option));
}

void Options::Reset()
{
    SetOptions().clear();
}
