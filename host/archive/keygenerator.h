#pragma once

#include "bravik_archive_export.h"

#include <cstdint>
#include <random>
#include <string>

// Opaque record keys in GUID form. The all-zero GUID is reserved (it switches
// off half of a candidate search), so a generator never yields it.
class BRAVIK_ARCHIVE_EXPORT KeyGenerator
{
public:
    // Seeded: the same seed yields the same keys (demo data).
    explicit KeyGenerator(std::uint64_t seed);
    // Unseeded: keys from the system's entropy.
    KeyGenerator();

    std::string Next();

    // A process-wide generator for the services.
    static std::string NewKey();

private:
    std::mt19937_64 m_rng;
};
