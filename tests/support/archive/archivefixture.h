#pragma once

#include "archivebuilder.h"
#include "archivesnapshot.h"

#include <archive.h>
#include <archivedb.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

// A fresh archive file in its own temporary folder per test. The site has
// the standard dictionaries, two hospitals ("NORTH", "SOUTH"), "Enterprise"
// and a federated "FED", the user "admin" holding every right everywhere
// (the services act for it), the user "reader" holding no right, and
// nothing else; tests add the rest with Build().
class ArchiveFixture : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    Archive& Arc() { return *m_archive; }
    ArchiveDb& Db() { return m_archive->Db(); }
    ArchiveBuilder& Build() { return *m_builder; }
    std::string Path() const { return m_path; }
    std::filesystem::path Dir() const { return m_dir; }

    ArchiveSnapshot Snapshot() { return TakeSnapshot(Db()); }
    long long Count(const std::string& sql);
    std::string Text(const std::string& sql);

    // Convenience patients in NORTH.
    std::string NorthPatient(const std::string& last, const std::string& first, const std::string& dob = "19700101",
                             const std::string& gid = std::string());

    std::string m_north, m_south, m_enterprise, m_federated;

private:
    std::filesystem::path m_dir;
    std::string m_path;
    std::unique_ptr<Archive> m_archive;
    std::unique_ptr<ArchiveBuilder> m_builder;
};

// Asserts the archive holds exactly what `before` held.
#define EXPECT_ARCHIVE_UNCHANGED(before)                                                   \
    do {                                                                                   \
        const ArchiveSnapshot after_ = Snapshot();                                         \
        EXPECT_TRUE((before) == after_) << DescribeDifference((before), after_);           \
    } while (0)
