#pragma once

// TavHelper: fills the module's drop-down lists of coded values from the
// dictionaries and the organization collection, selects an item by code, and
// translates organization keys and IDs. Stateless: create one where needed.
//
// Item data point into records and strings the services own; nothing is
// allocated per item and nothing is freed when a box is emptied.

#include "bravik_export.h"

#include "ccombobox.h"
#include "cstring.h"
#include "dictionaryservice.h"

#include <ace/SString.h>

class CDuplicatePatientList;

class BRAVIK_EXPORT TavHelper
{
public:
    int InitSexCombo(CComboBox& box);
    int InitSexDescriptionCombo(CComboBox& box);
    int InitExamStatusCombo(CComboBox& box);
    void InitCountryCombo(CComboBox& box);
    void UpdateProvinceCombo(CComboBox& box, const ACE_CString& countryCode);
    int InitPriorityCombo(CComboBox& box);
    void InitMergeLinkReasonCombo(CComboBox& box) const;
    int InitOrganizationCombo(CComboBox& box, const bool& includeEnterprise);
    int InitLinkMergeOrganizationCombo(CComboBox& box);
    int SetCurSelDictionaryCombo(CComboBox& box, const ACE_CString& code);
    CString GetSexCodeDescription(const ACE_CString& code);
    CString OrganizationIDsToKeys(const CString& ids);
    CString OrganizationKeysToIDs(const CString& keys);
    bool IsFederatedPatient(const ACE_CString& organizationID) const;

private:
    // The duplicate list fills its "Sex" cell with the general filler.
    friend class CDuplicatePatientList;
    // The patient pages fill their sex, gender and country lists with it too.
    friend class PatientDemographicsImpl;
    friend class ContactPageImpl;
    int InitCombo(CComboBox& box, DictionaryService::eTOPICCODE topic, DictionaryService::eFORMAT format);
};
