#pragma once

#include "bravik_records_export.h"

#include <string>

// Site-wide switches answered by the static policy functions
// (PatientManagementService::IsEmptyPatientFirstNameAllowed, ParamUtils,
// Framework::BSNModifier, PatientGIDFormatter, ProductConfiguration). The
// host (the archive, from its settings) installs them; tests set and reset them.
struct BRAVIK_RECORDS_EXPORT SitePolicySettings
{
    bool emptyFirstNameAllowed = false;
    // MRNs are digits only.
    bool numericMRN = false;
    // The BSN field is shown / may be entered on create and edit.
    bool bsnEnabled = false;
    bool bsnCreateEditEnabled = false;
    // Title of the patient global identifier column and field.
    std::string patientIDColumnName = "SSN";
    // Studies may be deleted with their exam.
    bool studyDeletionEnabled = true;
};

class BRAVIK_RECORDS_EXPORT SitePolicy
{
public:
    static const SitePolicySettings& Get();
    // Returns the settings it replaced.
    static SitePolicySettings Set(const SitePolicySettings& settings);
    static void Reset();
};
