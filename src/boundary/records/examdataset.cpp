#include "examdataset.h"

#include "bparser.h"

#include <algorithm>

ACE_CString ExamDataSet::GetExamCodeModifiersText() const
{
    std::vector<ACE_CString> codes;
    for (const auto& m : m_modifiers)
        codes.push_back(m.GetCode());
    return BParser::Join(codes, BParser::DEFAULT_SEP);
}

const ProviderRecord* ExamDataSet::FindProvider(ProviderRecord::ePROVIDERTYPE type) const
{
    for (const auto& p : m_providers)
        if (p.GetProviderType() == type)
            return &p;
    return nullptr;
}

void ExamDataSet::RemoveProviders(ProviderRecord::ePROVIDERTYPE type)
{
    m_providers.erase(std::remove_if(m_providers.begin(), m_providers.end(),
                                     [type](const ProviderRecord& p) { return p.GetProviderType() == type; }),
                      m_providers.end());
}
