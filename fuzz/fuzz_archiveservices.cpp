// Fuzzes the archive's services with a random run of operations on a small
// archive: creates, edits, deletes, merges, links, unlinks and ignores, each
// drawn from three input bytes. Whatever the services accept or refuse, the
// kept candidate pairs must answer exactly as the straightforward query, the
// upkeep must equal a full rebuild, and the archive's own check must pass.
#include "fuzzcheck.h"

#include <archive.h>
#include <archivebuilder.h>
#include <archivechecker.h>
#include <archivedb.h>
#include <candidatestore.h>
#include <indexedcandidatesearch.h>
#include <scancandidatesearch.h>
#include <sqlitepatientservice.h>

#include <linkedpatientinfo.h>
#include <patientdetailrecord.h>

#include <SQLiteCpp/Statement.h>

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

namespace {

const char* const kLasts[] = {"Smith", "Smyth", "SMITH", "Brown", "Braun", "Lee", "Ann", "O'Neil"};
const char* const kFirsts[] = {"Ann", "ann", "Lee", "Smith", "Bob", ""};
const char* const kDobs[] = {"19800305", "19800503", "19800315", "19911212", "00000000"};
const char* const kGids[] = {"", "", "111", "222"};
const char* const kSexes[] = {"F", "M", ""};

template <typename T, size_t N>
const T& Pick(const T (&list)[N], std::uint8_t byte)
{
    return list[byte % N];
}

struct Run
{
    Archive& archive;
    std::vector<std::string> orgs;
    std::vector<std::string> keys;
    int serial = 0;

    SqlitePatientService& Svc() { return archive.Patients(); }
    const std::string& Key(std::uint8_t b) { return keys[b % keys.size()]; }

    PatientDetailRecord Record(std::uint8_t a, std::uint8_t b)
    {
        PatientDetailRecord r;
        r.SetOrganizationKey(orgs[a % orgs.size()].c_str());
        r.SetPatientID(std::to_string(1000 + ++serial).c_str());
        r.SetName(BPersonName(Pick(kLasts, a >> 2), Pick(kFirsts, b), "", "", ""));
        r.SetSexCode(Pick(kSexes, b >> 3));
        r.SetDOB(BDate::FromString(Pick(kDobs, b >> 5)));
        r.SetPatientGID(Pick(kGids, a >> 5));
        return r;
    }

    void Step(std::uint8_t op, std::uint8_t a, std::uint8_t b)
    {
        if (keys.empty() || op % 8 == 0) {
            PatientDetailRecord r = Record(a, b);
            ACE_CString key;
            if (Svc().CreatePatient(&r, key) == 0)
                keys.push_back(key.c_str());
            return;
        }
        const std::string x = Key(a), y = Key(b);
        switch (op % 8) {
        case 1: {
            PatientDetailRecord r;
            if (Svc().GetPatient(x.c_str(), &r, ACE_CString()) != 0)
                return;
            r.SetName(BPersonName(Pick(kLasts, b), Pick(kFirsts, a), "", "", ""));
            r.SetPatientGID(Pick(kGids, b >> 4));
            Svc().ModifyPatient(&r);
            return;
        }
        case 2: Svc().DeletePatient(x.c_str(), ACE_CString(), "Test patient"); return;
        case 3: {
            PatientDetailRecord target;
            if (Svc().GetPatient(y.c_str(), &target, ACE_CString()) != 0)
                return;
            Svc().MergePatients(x.c_str(), &target, "Duplicate", std::vector<LinkedPatientInfo*>());
            return;
        }
        case 4: {
            PatientDetailRecord p, q;
            if (Svc().GetPatient(x.c_str(), &p, ACE_CString()) == 0 && Svc().GetPatient(y.c_str(), &q, ACE_CString()) == 0)
                Svc().LinkPatients(x.c_str(), p.GetOrganizationKey(), y.c_str(), q.GetOrganizationKey(), nullptr);
            return;
        }
        case 5: Svc().UnLinkPatient(x.c_str(), ACE_CString()); return;
        default: Svc().IgnoreDuplicatePatients(x.c_str(), y.c_str()); return;
        }
    }
};

std::vector<std::string> KeptPairs(ArchiveDb& db)
{
    std::vector<std::string> rows;
    SQLite::Statement q(db.Handle(), "SELECT key_a || '|' || key_b || '|' || rules || '|' || reason || '|' || merge"
                                     " FROM candidate_pairs ORDER BY 1");
    while (q.executeStep())
        rows.push_back(q.getColumn(0).getString());
    return rows;
}

void CheckInvariants(ArchiveDb& db)
{
    CandidateCriteria all;
    all.rowLimit = 0;
    std::vector<CandidatePair> kept, straight;
    long long keptTotal = -1, straightTotal = -2;
    FUZZ_CHECK(IndexedCandidateSearch(db).Find(all, kept, keptTotal) == 0);
    FUZZ_CHECK(ScanCandidateSearch(db).Find(all, straight, straightTotal) == 0);
    FUZZ_CHECK(keptTotal == straightTotal);
    FUZZ_CHECK(kept.size() == straight.size());
    for (size_t i = 0; i < kept.size(); ++i) {
        FUZZ_CHECK(kept[i].first.key == straight[i].first.key);
        FUZZ_CHECK(kept[i].second.key == straight[i].second.key);
        FUZZ_CHECK(kept[i].reasonKind == straight[i].reasonKind);
        FUZZ_CHECK(kept[i].merge == straight[i].merge);
    }
    const auto upkept = KeptPairs(db);
    CandidateStore(db).Rebuild();
    FUZZ_CHECK(upkept == KeptPairs(db));
    FUZZ_CHECK(ArchiveChecker(db).Run().empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    auto archive = Archive::Open(":memory:");
    ArchiveBuilder build(archive->Db());
    build.StandardDictionaries();
    Run run{*archive, {build.Org("NORTH"), build.Org("SOUTH")}, {}};
    build.User("admin", true);
    for (const auto& org : run.orgs)
        build.Grant("admin", org, true, true, true);
    archive->SetUser("admin");
    for (std::size_t i = 0; i + 2 < size && i < 3 * 64; i += 3) {
        try {
            run.Step(data[i], data[i + 1], data[i + 2]);
        } catch (const std::exception&) {
            // A readable refusal (an invisible character, a busy archive) is an answer too.
        }
    }
    CheckInvariants(archive->Db());
    return 0;
}
