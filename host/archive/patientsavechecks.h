#pragma once

// The checks that stand between a patient dialog's save and the archive, and
// the readable refusals a clerk can act on. A refusal is thrown as the
// framework's server exception: its text is the reason the dialog shows
// ("Error updating Patient ID %s.  Reason: %s"), and the save's transaction
// rolls back, so nothing is half-written.

#include <string>

class ArchiveDb;
class PatientDetailRecord;

namespace PatientSaveChecks {

// The record's current version, as a record carries it.
void ReadVersion(ArchiveDb& db, const std::string& patientKey, PatientDetailRecord& record);

// For a record read from the archive (it carries a version), a patient that
// is gone or merged away is refused readably; otherwise rc comes back as it is.
int RefuseGone(int rc, const PatientDetailRecord& record);

// Inside the save's transaction: refuses a record whose version is not the
// archive's (another workstation saved the patient since it was read).
void RefuseStale(ArchiveDb& db, const std::string& patientKey, const PatientDetailRecord& record);

[[noreturn]] void RefuseTakenMrn(const std::string& mrn, const std::string& organizationID);
[[noreturn]] void RefuseMissingRight(const std::string& organizationID);

} // namespace PatientSaveChecks
