// CDuplicatePatientList::MLCDataSetBuilder: search-header criteria to a
// merge/link candidate query.

#include "duplicates/duplicatepatientlist.h"

#include "boundary/bravikmodulestate.h"
#include "boundary/resource.h"

#include "bdatetime.h"
#include "bparser.h"
#include "daterangectrl.h"
#include "dictionaryrecord.h"
#include "dictionaryservice.h"
#include "localefunctions.h"
#include "mergelinkcandidatesquerydataset.h"
#include "messagebox.h"
#include "orgoperationscollection.h"
#include "paramutils.h"
#include "serviceregistry.h"
#include "session.h"
#include "stringtable.h"

#include <ace/Log_Msg.h>

#include <vector>

namespace {

// The all-zero key switches one half (merge or link) of the search off.
const char* const NO_ORGANIZATIONS = "00000000-0000-0000-0000-000000000000";

void logRefusedCriterion(const CString& error)
{
    ACE_Log_Msg* log = ACE_Log_Msg::instance();
    log->file("duplicatepatientlist");
    log->linenum(587);
    log->log(LM_INFO, "Function: %s, Line: %d: Failed to build MergeLink Candidate DataSet for query. Error: %s\n",
             "CDuplicatePatientList::MLCDataSetBuilder::BuildFromParams", 587, error.GetString());
}

} // namespace

CDuplicatePatientList::MLCDataSetBuilder::MLCDataSetBuilder(int rowCount) : m_rowCount(rowCount) {}

bool CDuplicatePatientList::MLCDataSetBuilder::BuildFromParams(const std::map<CString, CString>& params,
                                                                MergeLinkCandidatesQueryDataSet& query)
{
    BRAVIK_MANAGE_STATE();
    if (COLNAMES.empty())
        LoadNames();

    ACE_CString organizationKeys;
    bool merge = true;
    bool link = true;
    CString error;

    for (const auto& [name, rawValue] : params) {
        const CString key = name;
        CString value = rawValue;
        value.Trim();
        if (value.IsEmpty())
            continue;
        // The order of these tests is part of the behaviour: "Sex" is looked
        // at before "DOB".
        if (key == GetColumnName(eORGANIZATION)) {
            ServiceRegistry* registry = Session::ServiceInstance();
            OrgOperationsCollection* orgs = registry ? registry->GetOrgOperationsCollection() : nullptr;
            const ACE_CString keys = orgs ? orgs->OrganizationIDsToKeys(ACE_CString(value.GetString()), 0) : ACE_CString();
            ACE_CString trimmed;
            BParser::TrimTokens(trimmed, keys.c_str(), ',');
            if (trimmed.length() == 0) {
                error = LoadString(IDS_DUP_ERR_ORGANIZATION);
                break;
            }
            organizationKeys = trimmed;
        } else if (key == GetColumnName(eTYPE)) {
            if (!ProcessTypeParam(value, merge, link)) {
                error = LoadString(IDS_DUP_ERR_TYPE);
                break;
            }
        } else if (key == GetColumnName(ePATIENT_NAME)) {
            ACE_CString first;
            ACE_CString last;
            ProcessPatientNameParam(value, first, last);
            query.SetFirstName(first);
            query.SetLastName(last);
        } else if (key == GetColumnName(ePATIENT_ID)) {
            ACE_CString ids;
            BParser::TrimTokens(ids, value.GetString(), ',');
            query.SetSSN(ids);
        } else if (key == GetColumnName(eMRN)) {
            // A refused MRN is the MRN check's own business: no text, no log line.
            if (!ParamUtils::VerifyAndCorrectMRN(value))
                return false;
            if (!value.IsEmpty()) {
                query.SetMRN(ACE_CString(value.GetString()));
                query.SetUseNumericMRN(ParamUtils::UseNumericMRN());
            }
        } else if (key == GetColumnName(eREASON)) {
            ACE_CString reason;
            if (!ProcessReasonParam(value, reason)) {
                error = LoadString(IDS_DUP_ERR_REASON);
                break;
            }
            query.SetReason(reason);
        } else if (key == GetColumnName(eSEX)) {
            ACE_CString sex;
            // ProcessSexParam accepts any text; the branch and its text stay
            // for the day it checks the dictionary.
            if (!ProcessSexParam(value, sex)) {
                error = LoadString(IDS_DUP_ERR_SEX);
                break;
            }
            query.SetSexCode(sex);
        } else if (key == GetColumnName(eDOB)) {
            BDateTime begin;
            BDateTime end;
            if (!ProcessDOBParam(value, begin, end)) {
                error = LoadString(IDS_DUP_ERR_DOB);
                break;
            }
            query.SetBeginBirthDate(begin);
            query.SetEndBirthDate(end);
        }
    }

    if (!error.IsEmpty()) {
        logRefusedCriterion(error);
        return false;
    }

    query.SetMergeOrganizationKeys(merge ? organizationKeys : ACE_CString(NO_ORGANIZATIONS));
    query.SetLinkOrganizationKeys(link ? organizationKeys : ACE_CString(NO_ORGANIZATIONS));
    CString rows;
    rows.Format("%d", m_rowCount);
    query.SetRowCount(ACE_CString(rows.GetString()));
    return merge || link;
}

void CDuplicatePatientList::MLCDataSetBuilder::ProcessPatientNameParam(const CString& value, ACE_CString& first,
                                                                        ACE_CString& last)
{
    std::vector<ACE_CString> tokens;
    BParser::DeTokenizeEx(tokens, value.GetString(), ',');
    // Each given part matches names that begin with it.
    auto toPattern = [](const ACE_CString& token, ACE_CString& out) {
        ParamUtils::ConvertToWildcardQueryString(token.c_str(), out);
        if (out.length() == 0 || out[out.length() - 1] != '%')
            out += "%";
    };
    if (!tokens.empty())
        toPattern(tokens[0], last);
    if (tokens.size() >= 2)
        toPattern(tokens[1], first);
}

bool CDuplicatePatientList::MLCDataSetBuilder::ProcessTypeParam(const CString& value, bool& merge, bool& link)
{
    std::vector<ACE_CString> tokens;
    BParser::DeTokenizeEx(tokens, value.GetString(), ',');
    merge = false;
    link = false;
    for (const ACE_CString& token : tokens) {
        CString t = token.c_str();
        t.Trim();
        if (t == DUPTYPENAMES[0])
            merge = true;
        else if (t == DUPTYPENAMES[1])
            link = true;
    }
    return merge || link;
}

bool CDuplicatePatientList::MLCDataSetBuilder::ProcessReasonParam(const CString& value, ACE_CString& reason)
{
    // Only one reason may be searched for.
    if (value.Find(',') >= 0)
        return false;
    ServiceRegistry* registry = Session::ServiceInstance();
    DictionaryService* dictionaries = registry ? registry->GetDictionaryService() : nullptr;
    if (!dictionaries)
        return false;
    for (const DictionaryRecord* record : dictionaries->GetLinkMergeReasonDictionary()) {
        // The text the reason boxes show.
        const CString shown = record->GetDescription().c_str();
        if (shown.CompareNoCase(value) == 0) {
            reason = record->GetDescription();
            return true;
        }
    }
    return false;
}

bool CDuplicatePatientList::MLCDataSetBuilder::ProcessSexParam(const CString& value, ACE_CString& sex)
{
    CString code = value;
    code.Remove(' ');
    sex = code.GetString();
    return true;
}

bool CDuplicatePatientList::MLCDataSetBuilder::ProcessDOBParam(const CString& value, BDateTime& begin, BDateTime& end)
{
    CString range = value;
    range.Replace(DateRangeCtrl::DATE_SEP, CString(BParser::DEFAULT_SEP).GetString());
    if (!ParamUtils::GenerateDateRangeFromStringForCustomFilter(range.GetString(), begin, end, false)) {
        CString message;
        message.Format(LoadString(IDS_DUP_INVALID_DATE).GetString(), Locale::GetDatePattern().GetString());
        AfxMessageBox(message.GetString(), MB_OK);
        return false;
    }
    return true;
}
