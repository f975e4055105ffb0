// The exam dialog on a site of realistic size: N patients (1,000,000 unless
// told), 20,000 exam codes, and an exam linked to 10 others. Prints
// "name value" lines, in milliseconds:
//   exam_dialog_open_ms     creator call to the dialog shown and ready, edit
//                           mode (median)
//   exam_code_pick_p95_ms   a prefix typed into the exam-code chooser to its
//                           matches shown (95th percentile)
//   exam_save_p95_ms        OK to the exam saved (95th percentile)
//
//   bravik-bench-examdlg [--patients N] [--runs R] [--archive FILE]
// With --archive an existing bench archive is reused (made on first use).

#include "boundary/examdlgcreator.h"
#include "boundary/registercontrols.h"
#include "exam/examdetailspage.h"
#include "exam/examdlg.h"

#include <archive.h>
#include <archivebuilder.h>
#include <archivedb.h>
#include <keygenerator.h>
#include <referenceseeder.h>

#include "examdataset.h"
#include "examservice.h"
#include "queryexamcodesrequestfacade.h"
#include "serviceregistry.h"
#include "session.h"

#include "cdialog.h"
#include "dialogbench.h"
#include "edit.h"
#include "modalrunner.h"
#include "pickerdlg.h"
#include "pickersinterface.h"

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

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
using Runner = Bench::StopwatchRunner;

void SeedPatients(ArchiveDb& db, const std::string& org, int patients)
{
    static const char* const kLast[] = {"Smith", "Jones", "Brown", "Garcia", "Miller", "Davis", "Wilson", "Moore",
                                        "Taylor", "Clark", "Lewis", "Walker", "Young", "Allen", "King", "Wright"};
    static const char* const kFirst[] = {"Ann", "Bob", "Carl", "Dora", "Eve", "Frank", "Gina", "Hugo", "Iris", "Jack"};
    KeyGenerator keys(99);
    int written = 0;
    while (written < patients) {
        SQLite::Transaction tx(db.Handle());
        SQLite::Statement ins(db.Handle(), "INSERT INTO patients(patient_key, org_key, mrn, last_name, first_name, "
                                           "sex_code, dob, created, modified) VALUES (?, ?, ?, ?, ?, ?, ?, '', '')");
        const int end = std::min(patients, written + 50000);
        for (; written < end; ++written) {
            ins.bind(1, keys.Next());
            ins.bind(2, org);
            ins.bind(3, "B" + std::to_string(written));
            ins.bind(4, kLast[written % 16]);
            ins.bind(5, kFirst[(written / 16) % 10]);
            ins.bind(6, written % 2 ? "F" : "M");
            ins.bind(7, std::to_string(19300101 + (written % 80) * 10000 + (written % 12) * 100 + written % 28));
            ins.exec();
            ins.reset();
        }
        tx.commit();
        std::fprintf(stderr, "\rseeding: %d / %d patients", written, patients);
    }
    std::fprintf(stderr, "\n");
}

struct Site
{
    std::string exam;
    std::string org;
};

Site BuildSite(Archive& archive, int patients)
{
    ArchiveDb& db = archive.Db();
    Site site;
    {
        SQLite::Statement q(db.Handle(), "SELECT org_key FROM organizations WHERE org_id = 'BENCH'");
        if (q.executeStep()) {
            site.org = q.getColumn(0).getString();
            SQLite::Statement e(db.Handle(), "SELECT exam_key FROM exams WHERE accession = 'BENCH-0'");
            if (e.executeStep())
                site.exam = e.getColumn(0).getString();
            return site;
        }
    }
    ArchiveBuilder build(db);
    build.StandardDictionaries();
    build.User("admin", true);
    site.org = build.Org("BENCH");
    build.Grant("admin", site.org, true, true, true);
    KeyGenerator keys(7);
    {
        SQLite::Transaction tx(db.Handle());
        SeedReferenceVolume(db, keys, ReferenceVolume{20000, 600});
        tx.commit();
    }
    SeedPatients(db, site.org, patients);
    const std::string patient = build.Patient(site.org, "BENCH-P", "Bench", "Patient", "F", "19700101", "");
    archive.InstallIntoSession("admin");
    ExamService* exams = Session::ServiceInstance()->GetExamService();
    std::vector<std::string> keysOf;
    for (int i = 0; i <= 10; ++i) {
        ExamDataSet e;
        e.SetPatientKey(patient.c_str());
        e.SetAccessionNumber(("BENCH-" + std::to_string(i)).c_str());
        e.SetPriorityCode("R");
        e.SetExamCode("CTHEADWO");
        ACE_CString key;
        exams->CreateExam(&e, key);
        keysOf.push_back(key.c_str());
        if (i > 0)
            exams->LinkExams(keysOf[0].c_str(), "", key.c_str(), "");
    }
    site.exam = keysOf[0];
    archive.Uninstall();
    return site;
}

double OpenMs(Runner& runner, const Site& site, int runs)
{
    std::vector<double> times;
    runner.script = nullptr;
    for (int run = 0; run <= runs; ++run) {
        TavCreator::ExamDlgCreator creator;
        const auto start = Clock::now();
        creator.DisplayExamDlg(site.exam.c_str(), nullptr);
        if (run > 0) // the first run warms caches and fonts
            times.push_back(Ms(start, runner.ready));
    }
    return Percentile(times, 0.5);
}

double PickP95(Runner& runner, const Site& site)
{
    // Prefixes as a user types them: one, two, three and more characters of real codes.
    std::vector<std::string> prefixes;
    for (const char* code : {"CTHEADWO", "MRKNEEWB", "USABDOMENCMP", "CRCHEST2V", "NMWHOLEBODYSPC", "MGBREASTSCR",
                             "PTWHOLEBODYONC", "XACAROTIDANG"})
        for (size_t n = 1; n <= 6; ++n)
            prefixes.push_back(std::string(code, n));
    std::vector<double> times;
    runner.script = [&](CDialog& dlg) {
        auto& picker = static_cast<PickerDlg&>(dlg);
        for (int round = 0; round < 3; ++round)
            for (const std::string& prefix : prefixes) {
                const auto start = Clock::now();
                picker.Search(prefix.c_str());
                QApplication::processEvents();
                times.push_back(Ms(start, Clock::now()));
            }
    };
    PickersInterface::ParamMap params{{QueryExamCodesRequestFacade::ExamCodeParamName(), ""},
                                      {QueryExamCodesRequestFacade::OrgKeyParamName(), site.org.c_str()}};
    std::vector<ExamCodeRecord*> chosen;
    PickersInterface().SelectExamCodes(params, nullptr, chosen);
    return Percentile(times, 0.95);
}

double SaveP95(Runner& runner, const Site& site, int runs)
{
    std::vector<double> times;
    int n = 0;
    runner.script = [&](CDialog& dlg) {
        auto& exam = static_cast<ExamDlg&>(dlg);
        exam.GetDetailsPage()->GetDetails()->GetAccessionEdit()->SetWindowText(
            ("BENCH-0-" + std::to_string(++n % 2)).c_str());
        const auto start = Clock::now();
        exam.OnOK();
        times.push_back(Ms(start, Clock::now()));
    };
    for (int run = 0; run < runs * 2; ++run) {
        TavCreator::ExamDlgCreator creator;
        creator.DisplayExamDlg(site.exam.c_str(), nullptr);
    }
    return Percentile(times, 0.95);
}

} // namespace

int main(int argc, char** argv)
{
    int patients = 1000000;
    int runs = 15;
    std::string path;
    if (!Bench::Options().Number("patients", patients, 0).Number("runs", runs).Text("archive", path).Parse(argc, argv))
        return 2;
    Bench::UseOffscreenUnlessSet();
    QApplication app(argc, argv);
    const Bench::ArchiveFile file(path, "examdlg");
    {
        std::unique_ptr<Archive> archive = Archive::Open(file.Path());
        const Site site = BuildSite(*archive, patients);
        if (!archive->InstallIntoSession("admin")) {
            std::fprintf(stderr, "the archive has no user admin\n");
            return 1;
        }
        TavCreator::RegisterControls::RegisterPicker();
        Runner runner;
        ModalRunner* previous = SetModalRunner(&runner);
        const double open = OpenMs(runner, site, runs);
        const double pick = PickP95(runner, site);
        const double save = SaveP95(runner, site, runs);
        SetModalRunner(previous);
        TavCreator::RegisterControls::UnRegisterPicker();
        archive->Uninstall();
        std::printf("exam_dialog_open_ms %.2f\n", open);
        std::printf("exam_code_pick_p95_ms %.2f\n", pick);
        std::printf("exam_save_p95_ms %.2f\n", save);
    }
    return 0;
}
