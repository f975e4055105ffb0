#pragma once

// An archive installed into the session for its default user, with the
// scripted user and log capture every worklist test wants, and builders for
// candidate pairs.

#include <archivefixture.h>

#include "logcapture.h"
#include "scripteduser.h"

#include "localefunctions.h"
#include "sitepolicy.h"

#include <QTest>
#include <QWidget>

#include <memory>

class DupFixture : public ArchiveFixture
{
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        ASSERT_TRUE(Arc().InstallIntoSession("admin"));
        user = std::make_unique<ScriptedUser>();
        log = std::make_unique<LogCapture>();
    }
    void TearDown() override
    {
        log.reset();
        if (user)
            user->VerifyAllConsumed();
        user.reset();
        Arc().Uninstall();
        ArchiveFixture::TearDown();
    }

    std::string P(const std::string& org, const std::string& mrn, const std::string& last, const std::string& first,
                  const std::string& sex, const std::string& dob, const std::string& gid)
    {
        return Build().Patient(org, mrn, last, first, sex, dob, gid);
    }

    // n pairs of patients in NORTH sharing an identifier each.
    void ManyPairs(int n)
    {
        // Each pair has its own birth date: the archive also pairs patients on
        // first name + birth date + sex and on a phonetic last name + birth
        // date, and "Pair0".."PairN" sound alike, so a shared date would make
        // every "A" a candidate of every other "A". The dates of two pairs
        // differ in at least two digits (year, and month or day), since "A"s
        // with similar last names and birth dates one digit apart are
        // candidates too.
        for (int i = 0; i < n; ++i) {
            const std::string gid = std::to_string(500000000 + i);
            const std::string dob = std::to_string(1800 + i) + (i % 12 < 9 ? "0" : "") + std::to_string(i % 12 + 1)
                                  + std::to_string(13 + i % 7);
            P(m_north, "M" + std::to_string(2 * i), "Pair" + std::to_string(i), "A", "M", dob, gid);
            P(m_north, "M" + std::to_string(2 * i + 1), "Pair" + std::to_string(i), "B", "M", dob, gid);
        }
    }

    // Log lines of one priority as (file, line, text).
    std::vector<std::tuple<std::string, int, std::string>> LogLines(ACE_Log_Priority type) const
    {
        std::vector<std::tuple<std::string, int, std::string>> out;
        for (const LogLine& l : log->Lines(type))
            out.emplace_back(l.file, l.line, l.text);
        return out;
    }

    std::unique_ptr<ScriptedUser> user;
    std::unique_ptr<LogCapture> log;
};
