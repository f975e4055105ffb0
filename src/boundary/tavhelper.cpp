#include "boundary/tavhelper.h"

#include "boundary/bravikmodulestate.h"

#include "combobox.h"
#include "dictionaryrecord.h"
#include "orgoperations.h"
#include "orgoperationscollection.h"
#include "serviceregistry.h"
#include "session.h"
#include "worklistutils.h"

#include <vector>

namespace {

DictionaryService* dictionaries()
{
    ServiceRegistry* registry = Session::ServiceInstance();
    return registry ? registry->GetDictionaryService() : nullptr;
}

OrgOperationsCollection* organizations()
{
    ServiceRegistry* registry = Session::ServiceInstance();
    return registry ? registry->GetOrgOperationsCollection() : nullptr;
}

// The toolkit's own box treats "code-description" items as such.
void markCodeDescription(CComboBox& box)
{
    if (auto* own = qobject_cast<ComboBox*>(&box))
        own->SetCodeDescription(true);
}

void* itemDatum(const char* text)
{
    return const_cast<char*>(text);
}

} // namespace

int TavHelper::InitCombo(CComboBox& box, DictionaryService::eTOPICCODE topic, DictionaryService::eFORMAT format)
{
    box.ResetContent();
    DictionaryService* service = dictionaries();
    if (!service)
        return 1;
    const std::vector<DictionaryRecord*> records = service->GetDictionary(topic);
    for (DictionaryRecord* record : records) {
        CString text;
        switch (format) {
        case DictionaryService::eCODE:
            text = record->GetCode().c_str();
            break;
        case DictionaryService::eDESCRIPTION:
            text = record->GetDescription().c_str();
            break;
        case DictionaryService::eCODE_DESCRIPTION:
            text.Format("%s-%s", record->GetCode().c_str(), record->GetDescription().c_str());
            break;
        }
        const int index = box.AddString(text);
        box.SetItemDataPtr(index, record);
    }
    if (format == DictionaryService::eCODE_DESCRIPTION)
        markCodeDescription(box);
    return 1;
}

int TavHelper::InitSexCombo(CComboBox& box)
{
    BRAVIK_MANAGE_STATE();
    return InitCombo(box, DictionaryService::eSEX, DictionaryService::eCODE);
}

int TavHelper::InitSexDescriptionCombo(CComboBox& box)
{
    BRAVIK_MANAGE_STATE();
    return InitCombo(box, DictionaryService::eSEX, DictionaryService::eDESCRIPTION);
}

int TavHelper::InitExamStatusCombo(CComboBox& box)
{
    BRAVIK_MANAGE_STATE();
    return InitCombo(box, DictionaryService::eEXAM_STATUS, DictionaryService::eCODE_DESCRIPTION);
}

void TavHelper::InitCountryCombo(CComboBox& box)
{
    BRAVIK_MANAGE_STATE();
    InitCombo(box, DictionaryService::eCOUNTRY, DictionaryService::eDESCRIPTION);
    for (int i = 0; i < box.GetCount(); ++i) {
        if (box.GetLBText(i).CompareNoCase("UNITED STATES") == 0) {
            box.SetCurSel(i);
            return;
        }
    }
}

void TavHelper::UpdateProvinceCombo(CComboBox& box, const ACE_CString& countryCode)
{
    BRAVIK_MANAGE_STATE();
    box.ResetContent();
    DictionaryService* service = dictionaries();
    if (!service)
        return;
    // The vector is ours, the records stay the service's.
    const std::vector<DictionaryRecord*> states = service->ListCountryStates(countryCode);
    for (DictionaryRecord* record : states) {
        const int index = box.AddString(record->GetDescription().c_str());
        box.SetItemDataPtr(index, record);
    }
}

int TavHelper::InitPriorityCombo(CComboBox& box)
{
    BRAVIK_MANAGE_STATE();
    // Only the edit text is cleared: a second call lists every priority a
    // second time, as the dialogs have always had it.
    box.SetWindowText("");
    DictionaryService* service = dictionaries();
    if (!service)
        return 1;
    const std::vector<DictionaryRecord*>& codes = service->GetExamPriorityCodes();
    const int n = static_cast<int>(codes.size());
    // Positions no code claims stay empty (-1) and are left out.
    std::vector<int> position(static_cast<size_t>(n), -1);
    for (int i = 0; i < n; ++i) {
        const int rank = WorkListUtils::GetPriorityCodeIndex(codes[static_cast<size_t>(i)]->GetCode());
        if (rank >= 0 && rank < n)
            position[static_cast<size_t>(rank)] = i;
    }
    int inserted = 0;
    for (int j = 0; j < n; ++j) {
        const int i = position[static_cast<size_t>(j)];
        if (i < 0)
            continue;
        const DictionaryRecord* record = codes[static_cast<size_t>(i)];
        CString text;
        text.Format("%s-%s", record->GetCode().c_str(), record->GetDescription().c_str());
        const int index = box.InsertString(inserted++, text);
        box.SetItemDataPtr(index, itemDatum(record->GetCode().c_str()));
    }
    markCodeDescription(box);
    return 1;
}

void TavHelper::InitMergeLinkReasonCombo(CComboBox& box) const
{
    BRAVIK_MANAGE_STATE();
    box.SetWindowText("");
    DictionaryService* service = dictionaries();
    if (!service)
        return;
    for (DictionaryRecord* record : service->GetLinkMergeReasonDictionary()) {
        const int index = box.AddString(record->GetDescription().c_str());
        box.SetItemDataPtr(index, record);
    }
}

int TavHelper::InitOrganizationCombo(CComboBox& box, const bool& includeEnterprise)
{
    BRAVIK_MANAGE_STATE();
    box.SetWindowText("");
    OrgOperationsCollection* collection = organizations();
    if (!collection)
        return 1;
    for (const OrgOperations* org : collection->GetOrganizations()) {
        const CString id = org->GetOrganizationID().c_str();
        if (!includeEnterprise && id.CompareNoCase("Enterprise") == 0)
            continue;
        const int index = box.AddString(id);
        box.SetItemDataPtr(index, itemDatum(org->GetOrganizationKey().c_str()));
    }
    return 1;
}

int TavHelper::InitLinkMergeOrganizationCombo(CComboBox& box)
{
    BRAVIK_MANAGE_STATE();
    box.SetWindowText("");
    OrgOperationsCollection* collection = organizations();
    if (!collection)
        return 1;
    const UserRights& rights = Session::Instance().GetUserRights();
    for (const OrgOperations* org : collection->GetOrganizations()) {
        const CString id = org->GetOrganizationID().c_str();
        if (id.CompareNoCase("Enterprise") == 0)
            continue;
        if (!rights.HasLinkPatientRight(org->GetOrganizationID()) &&
            !rights.HasMergePatientRight(org->GetOrganizationID()))
            continue;
        const int index = box.AddString(id);
        box.SetItemDataPtr(index, itemDatum(org->GetOrganizationKey().c_str()));
    }
    return 1;
}

int TavHelper::SetCurSelDictionaryCombo(CComboBox& box, const ACE_CString& code)
{
    BRAVIK_MANAGE_STATE();
    if (box.GetCount() == 0)
        return -1;
    for (int i = 0; i < box.GetCount(); ++i) {
        const auto* record = static_cast<const DictionaryRecord*>(box.GetItemDataPtr(i));
        if (record && record->GetCode() == code) {
            box.SetCurSel(i);
            return i;
        }
    }
    return -1;
}

CString TavHelper::GetSexCodeDescription(const ACE_CString& code)
{
    BRAVIK_MANAGE_STATE();
    DictionaryService* service = dictionaries();
    if (!service)
        return CString();
    return CString(service->GetDescriptionForCode(DictionaryService::eSEX, code, ACE_CString("")).c_str());
}

CString TavHelper::OrganizationIDsToKeys(const CString& ids)
{
    BRAVIK_MANAGE_STATE();
    OrgOperationsCollection* collection = organizations();
    if (!collection)
        return CString();
    return CString(collection->OrganizationIDsToKeys(ACE_CString(ids.GetString()), 0).c_str());
}

CString TavHelper::OrganizationKeysToIDs(const CString& keys)
{
    BRAVIK_MANAGE_STATE();
    OrgOperationsCollection* collection = organizations();
    if (!collection)
        return CString();
    return CString(collection->OrganizationKeysToIDs(ACE_CString(keys.GetString())).c_str());
}

bool TavHelper::IsFederatedPatient(const ACE_CString& organizationID) const
{
    BRAVIK_MANAGE_STATE();
    OrgOperationsCollection* collection = organizations();
    const ACE_CString federated = collection ? collection->GetFederatedOrgID() : ACE_CString();
    return organizationID == federated;
}
