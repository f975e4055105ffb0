#include "worklistutils.h"

#include "dictionaryrecord.h"
#include "dictionaryservice.h"
#include "examqueryrecord.h"
#include "session.h"

namespace {
std::vector<ACE_CString>& Ranking()
{
    static std::vector<ACE_CString> ranking;
    return ranking;
}
} // namespace

int WorkListUtils::GetPriorityCodeIndex(const ACE_CString& code)
{
    const auto& ranking = Ranking();
    if (!ranking.empty()) {
        for (size_t i = 0; i < ranking.size(); ++i)
            if (ranking[i] == code)
                return static_cast<int>(i);
        return -1;
    }
    ServiceRegistry* registry = Session::ServiceInstance();
    DictionaryService* dictionaries = registry ? registry->GetDictionaryService() : nullptr;
    if (!dictionaries)
        return -1;
    const auto& codes = dictionaries->GetExamPriorityCodes();
    for (size_t i = 0; i < codes.size(); ++i)
        if (codes[i] && codes[i]->GetCode() == code)
            return static_cast<int>(i);
    return -1;
}

void WorkListUtils::SetPriorityRanking(const std::vector<ACE_CString>& codesInRankOrder)
{
    Ranking() = codesInRankOrder;
}

bool WorkListUtils::IsLinkUnlinkWarnable(const ExamQueryRecord& exam, bool strict)
{
    if (exam.GetLinkedFlag() == "true" && exam.IsMarkedRead())
        return true;
    const char status = exam.GetStatusCode().length() ? exam.GetStatusCode().c_str()[0] : '\0';
    if (status == 'F')
        return true;
    return strict && status != '\0' && status != 'S';
}

void WorkListUtils::Reset()
{
    Ranking().clear();
}
