#pragma once

#include "bravik_archive_export.h"

#include <cstdint>
#include <functional>
#include <random>
#include <string>

class ArchiveDb;

struct SeedOptions
{
    int patients = 1000;
    // Share of patients that get a second, slightly different record.
    double duplicateRate = 0.05;
    // Share of patients that also have a linked record in another organization.
    double linkedRate = 0.05;
    std::uint64_t seed = 1;
    // Patients one write transaction adds: few enough that another
    // workstation's save waits a fraction of a second at most.
    int batchSize = 1000;
};

// Fills an archive with a believable site. Deterministic for a seed: the same
// options on an empty archive give the same rows.
class BRAVIK_ARCHIVE_EXPORT DemoSeeder
{
public:
    // (patients written so far, patients asked for)
    using Progress = std::function<void(int, int)>;

    explicit DemoSeeder(ArchiveDb& db);

    // Organizations, users and rights, site settings, every dictionary and the
    // reference data; does nothing when the site already has organizations.
    // Returns true when it wrote them.
    bool SeedSite(std::uint64_t seed = 1);

    // The site (when missing) and then `patients` patients with exams,
    // studies, duplicates and links, one transaction per batch.
    void Seed(const SeedOptions& options, const Progress& progress = Progress());

private:
    struct Impl;
    ArchiveDb& m_db;
};
