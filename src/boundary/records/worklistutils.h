#pragma once

#include "bravik_records_export.h"

#include <ace/SString.h>

#include <functional>
#include <vector>

class ExamQueryRecord;

// Work-list rules shared by the host's exam views.
class BRAVIK_RECORDS_EXPORT WorkListUtils
{
public:
    // Rank of a priority code in the work list's order (0 first), or -1.
    // With no ranking installed, the rank is the code's position in the
    // priority dictionary (DictionaryService::GetExamPriorityCodes).
    static int GetPriorityCodeIndex(const ACE_CString& code);
    // Installs the ranking: codes in rank order. An empty list uninstalls it.
    static void SetPriorityRanking(const std::vector<ACE_CString>& codesInRankOrder);

    // Whether linking or unlinking the exam deserves a warning: it is linked
    // ("true") and has been read, or its status is final ('F') or, with
    // strict, its status is anything past scheduled (not 'S').
    static bool IsLinkUnlinkWarnable(const ExamQueryRecord& exam, bool strict);

    static void Reset();
};
