#pragma once

#include "archivefixture.h"

#include <archivecontext.h>
#include <archivedb.h>
#include <sqliteexamservice.h>
#include <sqlitepatientservice.h>

#include <memory>
#include <string>
#include <vector>

// Another workstation on the same archive file: its own connection, services
// and user ("admin", who holds every right).
struct OtherWorkstation
{
    explicit OtherWorkstation(const std::string& path)
        : db(path), context(db), patients(context), exams(context)
    {
        context.SetUser("admin");
    }
    ArchiveDb db;
    ArchiveContext context;
    SqlitePatientService patients;
    SqliteExamService exams;
};

// The fixture's archive with a second workstation on its file.
class TwoWorkstationFixture : public ArchiveFixture
{
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        m_other = std::make_unique<OtherWorkstation>(Path());
    }
    void TearDown() override
    {
        m_other.reset();
        ArchiveFixture::TearDown();
    }
    OtherWorkstation& Other() { return *m_other; }

private:
    std::unique_ptr<OtherWorkstation> m_other;
};

// The kept candidate pairs and their totals, one text a row, in key order:
// two archives with equal texts offer the same worklist.
std::vector<std::string> KeptPairs(ArchiveDb& db);
