#pragma once

#include <archivecontext.h>
#include <archivedb.h>
#include <sqliteexamservice.h>
#include <sqlitepatientservice.h>

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

// The kept candidate pairs and their totals, one text a row, in key order:
// two archives with equal texts offer the same worklist.
std::vector<std::string> KeptPairs(ArchiveDb& db);
