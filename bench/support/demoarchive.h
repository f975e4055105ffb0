#pragma once

// Opens a bench's archive, filling it with the demo site and `patients`
// patients the first time (and printing how long that took as seed_ms), so a
// large archive is seeded once and reused with --archive.

#include "benchsupport.h"

#include <archive.h>
#include <archivedb.h>
#include <demoseeder.h>

#include <SQLiteCpp/Database.h>

#include <cstdio>
#include <memory>
#include <string>

namespace Bench {

inline std::unique_ptr<Archive> OpenDemoArchive(const std::string& path, int patients)
{
    std::unique_ptr<Archive> archive = Archive::Open(path);
    if (archive->DefaultUser().empty() ||
        archive->Db().Handle().execAndGet("SELECT COUNT(*) FROM patients").getInt64() == 0) {
        SeedOptions options;
        options.patients = patients;
        const auto start = Clock::now();
        DemoSeeder(archive->Db()).Seed(options);
        std::printf("seed_ms %.1f\n", Ms(start, Clock::now()));
    }
    return archive;
}

} // namespace Bench
