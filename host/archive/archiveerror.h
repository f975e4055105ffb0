#pragma once

#include <serviceresult.h>

#include <string>

// Service result codes of the archive. Callers test only for zero; the codes
// are distinct so logs and tests can tell refusals apart.
namespace ArchiveResult {
constexpr int Ok = 0;
constexpr int InvalidArgument = ServiceResult::InvalidArgument; // empty, over-long or malformed input
constexpr int NotFound = ServiceResult::NotFound;         // unknown key
constexpr int MergedAway = ServiceResult::MergedAway;     // the key was merged into another patient
constexpr int NotPermitted = ServiceResult::NotPermitted; // the session user lacks the right
constexpr int Conflict = ServiceResult::Conflict;         // the change would break a rule (duplicate MRN, two records of one organization in a link group...)
constexpr int Unsupported = ServiceResult::Unsupported;   // the organization does not offer it (no MRN generation...)
}

// Readable reasons of the server exceptions the archive throws; the code of
// each exception tells them apart.
namespace ArchiveFaultText {
constexpr const char* Busy = "The archive is busy: another workstation is saving. Try again.";
constexpr const char* Damaged =
    "The archive file is damaged. Nothing more is saved to it: close the workstation, restore the archive from "
    "its last backup and have it checked with 'bravik-archive check'.";
constexpr const char* Failed = "The archive could not complete the operation. The details are in the log.";
constexpr int BusyCode = 5;
constexpr int DamagedCode = 11;
constexpr int FailedCode = 1;
}
