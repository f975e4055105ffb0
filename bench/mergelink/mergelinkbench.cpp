// The merge dialog's opening time for a pair whose patients each have a
// record in 20 organizations: from the creator's call to the dialog shown and
// ready for input (the linked records loaded, the rights checked, the lists
// filled and laid out, the first paint done). Prints "name value" lines;
// times are medians over the runs, in milliseconds.
//
//   bravik-bench-mergelink [--organizations N] [--runs R]

#include "boundary/mergepatientsdlgcreator.h"

#include <archive.h>
#include <archivebuilder.h>
#include <archivedb.h>

#include "cdialog.h"
#include "modalrunner.h"

#include "dialogbench.h"

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

using Bench::Clock;
using Bench::StopwatchRunner;

} // namespace

int main(int argc, char** argv)
{
    int organizations = 20;
    int runs = 15;
    if (!Bench::Options().Number("organizations", organizations).Number("runs", runs).Parse(argc, argv))
        return 2;
    Bench::UseOffscreenUnlessSet();
    QApplication app(argc, argv);

    const Bench::ArchiveFile file(std::string(), "mergelink");
    int exitCode = 0;
    {
        std::unique_ptr<Archive> archive = Archive::Open(file.Path());
        ArchiveBuilder build(archive->Db());
        build.StandardDictionaries();
        build.User("admin", true);
        std::vector<std::string> orgs;
        for (int i = 0; i < organizations; ++i) {
            char id[16];
            std::snprintf(id, sizeof id, "ORG%02d", i + 1);
            orgs.push_back(build.Org(id));
            build.Grant("admin", orgs.back(), true, true, true);
        }
        // The pair shares the first organization; each is linked to a record
        // of its own in every other one.
        auto patient = [&](const std::string& org, const std::string& mrn, const std::string& last) {
            ArchiveBuilder::PatientFields f;
            f.orgKey = org;
            f.mrn = mrn;
            f.last = last;
            f.first = "Pat";
            f.city = "Springfield";
            return build.Patient(f);
        };
        const std::string target = patient(orgs[0], "T0", "Target");
        const std::string source = patient(orgs[0], "S0", "Source");
        std::string targetGroup, sourceGroup;
        for (int i = 1; i < organizations; ++i) {
            const std::string t = patient(orgs[i], "T" + std::to_string(i), "Target");
            const std::string s = patient(orgs[i], "S" + std::to_string(i), "Source");
            if (targetGroup.empty()) {
                targetGroup = build.LinkGroup(target, t);
                sourceGroup = build.LinkGroup(source, s);
            } else {
                build.AddToGroup(targetGroup, t);
                build.AddToGroup(sourceGroup, s);
            }
        }
        if (!archive->InstallIntoSession("admin")) {
            std::fprintf(stderr, "the archive has no user admin\n");
            return 1;
        }

        StopwatchRunner runner;
        ModalRunner* previous = SetModalRunner(&runner);
        std::vector<double> times;
        for (int run = 0; run <= runs; ++run) {
            TavCreator::MergePatientsDlgCreator creator;
            const auto start = Clock::now();
            const int result = creator.DisplayDialog(target.c_str(), source.c_str(), nullptr);
            if (result != IDCANCEL) {
                std::fprintf(stderr, "the merge dialog did not open (%d)\n", result);
                exitCode = 1;
                break;
            }
            // The first run warms caches and fonts; it is not counted.
            if (run > 0)
                times.push_back(Bench::Ms(start, runner.ready));
        }
        SetModalRunner(previous);
        archive->Uninstall();
        if (exitCode == 0) {
            std::printf("merge_dialog_open_ms %.2f\n", Bench::Percentile(times, 0.5));
            std::printf("merge_dialog_organizations %d\n", organizations);
        }
    }
    return exitCode;
}
