#include "mergelinkcandidatesquerydataset.h"

#include <cerrno>
#include <cstdlib>

const char* const MergeLinkCandidatesQueryDataSet::NO_ORGANIZATIONS = "00000000-0000-0000-0000-000000000000";

int MergeLinkCandidatesQueryDataSet::GetRowCountValue() const
{
    const char* text = m_rowCount.c_str();
    if (!*text)
        return 0;
    char* end = nullptr;
    errno = 0;
    long v = std::strtol(text, &end, 10);
    if (errno != 0 || *end != '\0' || v < 0 || v > 1000000000L)
        return 0;
    return static_cast<int>(v);
}
