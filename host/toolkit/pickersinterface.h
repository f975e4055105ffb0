#pragma once

// PickersInterface: the five modal choosers the dialogs open from their
// pickers, over the session's dictionaries and providers. Constructed per
// use. Each opens a PickerDlg whose search starts from what the caller
// passes, and returns true when the user took at least one entry; the chosen
// entries are appended to the output list as new records that the caller
// frees. On false the list is left as it was.

#include "bravik_toolkit_export.h"

#include "cwnd.h"

#include <ace/SString.h>

#include <map>
#include <string>
#include <vector>

class ExamCodeModifierDataSet;
class ExamCodeRecord;
class LocationDataSet;
class PerformingResourceDataSet;
class ProviderCollection;
class ProviderRecord;

class BRAVIK_TOOLKIT_EXPORT PickersInterface
{
public:
    // Query parameters by the request facades' names (ExamCodeParamName,
    // CodeParamName, OrgKeyParamName ...).
    using ParamMap = std::map<std::string, ACE_CString>;

    PickersInterface() = default;

    // Searches the template's organization; starts from its name ("Last, First").
    bool SelectProviders(CWnd* owner, ProviderCollection* collection, std::vector<ProviderRecord*>& chosen);
    // Searches current's organization; starts from its location ID.
    bool SelectOrderingLocation(CWnd* owner, const LocationDataSet* current, std::vector<LocationDataSet*>& chosen);
    // Searches current's organization; starts from its resource ID.
    bool SelectPerformingResources(CWnd* owner, const PerformingResourceDataSet* current,
                                   std::vector<PerformingResourceDataSet*>& chosen);
    bool SelectExamCodes(const ParamMap& params, CWnd* owner, std::vector<ExamCodeRecord*>& chosen);
    // Several modifiers may be taken at once.
    bool SelectExamCodeModifiers(const ParamMap& params, CWnd* owner, std::vector<ExamCodeModifierDataSet*>& chosen);

    // The service's wildcard pattern for "starts with text": the text's own
    // wildcard characters are escaped.
    static ACE_CString PrefixPattern(const ACE_CString& text);
};
