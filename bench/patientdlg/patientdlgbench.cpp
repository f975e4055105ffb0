// The patient dialog over a large archive. Prints "name value" lines; times
// in milliseconds.
//
//   patient_dialog_open_ms   median, creator call to the edit dialog shown and
//                            painted, for a patient linked in 20 organizations
//   patient_save_p95_ms      95th percentile of 50 saves of a last-name correction:
//                            OK clicked to the dialog ended, validation, the
//                            save and the duplicate-candidate upkeep included
//   patient_save_p50_ms      median of the same saves
//   patient_save_linked_p95_ms  the same for the patient linked in 20
//                            organizations (every linked record is saved too)
//
//   bravik-bench-patientdlg [--archive FILE] [--patients N] [--runs R] [--saves S]
//
// Without --archive a temporary archive is seeded with N patients (default
// 1000000); with it, an existing archive is reused (seeded first when empty).
// The bench's own organizations and patients are added once.

#include "boundary/patientdlgcreator.h"
#include "boundary/resource.h"
#include "patient/patientdlg.h"

#include <archive.h>
#include <archivebuilder.h>
#include <archivedb.h>
#include <demoseeder.h>

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include "cdialog.h"
#include "demoarchive.h"
#include "dialogbench.h"
#include "modalrunner.h"

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

using Bench::Clock;
using Bench::Ms;
using Bench::Percentile;
using Bench::StopwatchRunner;

std::string FindOrEmpty(ArchiveDb& db, const std::string& sql)
{
    SQLite::Statement q(db.Handle(), sql);
    return q.executeStep() ? q.getColumn(0).getString() : std::string();
}

// The bench's patients, with digits-only MRNs as the demo site wants: one
// linked in 20 organizations of its own (MRNs 990000..990019) and one alone
// (MRN 990099). Made once per archive.
void AddBenchPatients(ArchiveDb& db, std::string& linked, std::string& single)
{
    const std::string ofBench01 =
        "SELECT p.patient_key FROM patients p JOIN organizations o ON o.org_key = p.org_key WHERE o.org_id = 'BENCH01' AND ";
    linked = FindOrEmpty(db, ofBench01 + "p.mrn = '990000'");
    single = FindOrEmpty(db, ofBench01 + "p.mrn = '990099'");
    if (!linked.empty() && !single.empty())
        return;
    ArchiveBuilder build(db);
    const std::string user = FindOrEmpty(db, "SELECT user_name FROM users WHERE is_default = 1");
    std::string group;
    for (int i = 0; i < 20; ++i) {
        char id[16];
        std::snprintf(id, sizeof id, "BENCH%02d", i + 1);
        const std::string org = build.Org(id);
        build.Grant(user, org, true, true, true);
        ArchiveBuilder::PatientFields f;
        f.orgKey = org;
        f.mrn = std::to_string(990000 + i);
        f.last = "Benchmark";
        f.first = "Linda";
        f.city = "Springfield";
        const std::string key = build.Patient(f);
        if (i == 0) {
            linked = key;
            f.mrn = "990099";
            f.first = "Sam";
            single = build.Patient(f);
        } else if (group.empty()) {
            group = build.LinkGroup(linked, key);
        } else {
            build.AddToGroup(group, key);
        }
    }
}

std::vector<double> TimeOpens(StopwatchRunner& runner, const std::string& key, int runs)
{
    std::vector<double> times;
    runner.script = nullptr;
    for (int run = 0; run <= runs; ++run) {
        TavCreator::PatientDlgCreator creator;
        const auto start = Clock::now();
        if (creator.DisplayPatientDlg(key.c_str(), nullptr) != IDCANCEL)
            return {};
        if (run > 0) // the first run warms caches and fonts
            times.push_back(Ms(start, runner.ready));
    }
    return times;
}

// One correction per save, OK to the dialog ended: the last name, between
// two spellings, so the duplicate candidates of the patient are found again
// on every save.
std::vector<double> TimeSaves(StopwatchRunner& runner, const std::string& key, int saves)
{
    std::vector<double> times;
    for (int run = 0; run <= saves; ++run) {
        double ms = -1;
        runner.script = [&](CDialog& dlg) {
            auto& patient = dynamic_cast<PatientDlg&>(dlg);
            auto* form = patient.findChild<CDialog*>(QStringLiteral("PatientDemographicsImpl"));
            form->SetDlgItemText(IDC_PAT_LAST, run % 2 ? "Benchmarc" : "Benchmark");
            const auto start = Clock::now();
            patient.OnOK();
            if (dlg.HasEnded())
                ms = Ms(start, Clock::now());
        };
        TavCreator::PatientDlgCreator creator;
        if (creator.DisplayPatientDlg(key.c_str(), nullptr) != IDOK || ms < 0)
            return {};
        if (run > 0)
            times.push_back(ms);
    }
    return times;
}

} // namespace

int main(int argc, char** argv)
{
    std::string archivePath;
    int patients = 1000000;
    int runs = 15;
    int saves = 50;
    if (!Bench::Options()
             .Text("archive", archivePath)
             .Number("patients", patients)
             .Number("runs", runs)
             .Number("saves", saves)
             .Parse(argc, argv))
        return 2;
    Bench::UseOffscreenUnlessSet();
    QApplication app(argc, argv);

    const Bench::ArchiveFile file(archivePath, "patientdlg");
    int exitCode = 0;
    {
        std::unique_ptr<Archive> archive = Bench::OpenDemoArchive(file.Path(), patients);
        std::string linked, single;
        AddBenchPatients(archive->Db(), linked, single);
        if (!archive->InstallIntoSession(archive->DefaultUser())) {
            std::fprintf(stderr, "the archive has no default user\n");
            return 1;
        }
        std::printf("archive_patients %lld\n",
                    static_cast<long long>(archive->Db().Handle().execAndGet("SELECT COUNT(*) FROM patients").getInt64()));

        StopwatchRunner runner;
        ModalRunner* previous = SetModalRunner(&runner);
        const std::vector<double> opens = TimeOpens(runner, linked, runs);
        const std::vector<double> singleSaves = TimeSaves(runner, single, saves);
        const std::vector<double> linkedSaves = TimeSaves(runner, linked, std::max(1, saves / 5));
        SetModalRunner(previous);
        archive->Uninstall();
        if (opens.empty() || singleSaves.empty() || linkedSaves.empty()) {
            std::fprintf(stderr, "the patient dialog did not open or did not save\n");
            exitCode = 1;
        } else {
            std::printf("patient_dialog_open_ms %.2f\n", Percentile(opens, 0.5));
            std::printf("patient_save_p50_ms %.2f\n", Percentile(singleSaves, 0.5));
            std::printf("patient_save_p95_ms %.2f\n", Percentile(singleSaves, 0.95));
            std::printf("patient_save_linked_p95_ms %.2f\n", Percentile(linkedSaves, 0.95));
        }
    }
    return exitCode;
}
