#include "patientsavechecks.h"

#include "archivedb.h"
#include "archiveerror.h"

#include <patientdetailrecord.h>
#include <server.h>

namespace {

std::string CurrentVersion(ArchiveDb& db, const std::string& patientKey)
{
    auto& q = db.Prepare("SELECT version FROM patients WHERE patient_key = ?");
    q.bind(1, patientKey);
    const std::string version = q.executeStep() ? q.getColumn(0).getString() : std::string();
    q.reset();
    return version;
}

} // namespace

namespace PatientSaveChecks {

void ReadVersion(ArchiveDb& db, const std::string& patientKey, PatientDetailRecord& record)
{
    record.SetVersion(CurrentVersion(db, patientKey).c_str());
}

int RefuseGone(int rc, const PatientDetailRecord& record)
{
    if (record.GetVersion().length() == 0)
        return rc;
    if (rc == ArchiveResult::MergedAway)
        throw Framework::Server("This patient was merged into another patient on another workstation after you "
                                "opened it. Your changes were not saved; open the surviving patient to make them.",
                                rc);
    if (rc == ArchiveResult::NotFound)
        throw Framework::Server("This patient was deleted on another workstation after you opened it. Your "
                                "changes were not saved.",
                                rc);
    return rc;
}

void RefuseStale(ArchiveDb& db, const std::string& patientKey, const PatientDetailRecord& record)
{
    if (record.GetVersion().length() == 0)
        return;
    const std::string now = CurrentVersion(db, patientKey);
    if (now.empty())
        RefuseGone(ArchiveResult::NotFound, record);
    if (now != record.GetVersion().c_str())
        throw Framework::Server("This patient was changed on another workstation after you opened it. Your "
                                "changes were not saved: note them, close this window and open the patient "
                                "again to see the other changes.",
                                ArchiveResult::Conflict);
}

void RefuseTakenMrn(const std::string& mrn, const std::string& organizationID)
{
    throw Framework::Server("The MRN " + mrn + " is already used by another patient in " + organizationID
                                + ". Enter a different MRN.",
                            ArchiveResult::Conflict);
}

void RefuseMissingRight(const std::string& organizationID)
{
    throw Framework::Server("You do not have the right to create or change patients in " + organizationID
                                + ". Ask your administrator for the right, or choose another organization.",
                            ArchiveResult::NotPermitted);
}

} // namespace PatientSaveChecks
