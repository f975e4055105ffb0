#pragma once

// The exam-side reference data of a demo site at the volume of a real one:
// a generated exam-code catalogue (every modality with its body parts and
// the usual variants), referring physicians with their practice address and
// work phone, more ordering locations and performing resources. Deterministic
// for a seed; written through the caller's open transaction.

#include "bravik_archive_export.h"

#include <cstdint>

class ArchiveDb;
class KeyGenerator;

struct ReferenceVolume
{
    int examCodes = 2400;
    int providers = 520;
};

// Writes up to examCodes codes (the catalogue holds 20,160 distinct ones)
// and the given number of providers.
BRAVIK_ARCHIVE_EXPORT void SeedReferenceVolume(ArchiveDb& db, KeyGenerator& keys, const ReferenceVolume& volume);
