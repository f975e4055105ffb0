// The worklist page over a large archive: the search the page runs (build
// the query, fetch, fill, sort) and a re-sort after a title click. Prints
// "name value" lines; times are medians over the runs, in milliseconds.
//
//   bravik-bench-worklist [--archive FILE] [--patients N] [--runs R]
//
// Without --archive a temporary archive is seeded with N patients (default
// 1000000); with it, an existing archive is reused (seeded first when empty).

#include "duplicates/duplicatepatientlist.h"
#include "duplicates/duplicatepatientpage.h"

#include <archive.h>
#include <archivedb.h>
#include <demoseeder.h>

#include <SQLiteCpp/Database.h>

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

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0.0 : v[v.size() / 2];
}

template <class F>
double timeMs(F&& f)
{
    const auto start = std::chrono::steady_clock::now();
    f();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main(int argc, char** argv)
{
    std::string archivePath;
    int patients = 1000000;
    int runs = 15;
    for (int i = 1; i < argc; ++i) {
        const std::string a = argv[i];
        if (a == "--archive" && i + 1 < argc)
            archivePath = argv[++i];
        else if (a == "--patients" && i + 1 < argc)
            patients = std::max(1, std::atoi(argv[++i]));
        else if (a == "--runs" && i + 1 < argc)
            runs = std::max(1, std::atoi(argv[++i]));
        else {
            std::fprintf(stderr, "usage: %s [--archive FILE] [--patients N] [--runs R]\n", argv[0]);
            return 2;
        }
    }
    if (!std::getenv("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication app(argc, argv);

    bool temporary = false;
    if (archivePath.empty()) {
        archivePath = (std::filesystem::temp_directory_path() /
                       ("bravik-bench-worklist-" + std::to_string(getpid()) + ".db"))
                          .string();
        temporary = true;
    }
    int exitCode = 0;
    {
        std::unique_ptr<Archive> archive = Archive::Open(archivePath);
        if (archive->DefaultUser().empty() ||
            archive->Db().Handle().execAndGet("SELECT COUNT(*) FROM patients").getInt64() == 0) {
            SeedOptions options;
            options.patients = patients;
            const double seedMs = timeMs([&] { DemoSeeder(archive->Db()).Seed(options); });
            std::printf("seed_ms %.1f\n", seedMs);
        }
        if (!archive->InstallIntoSession(archive->DefaultUser())) {
            std::fprintf(stderr, "the archive has no default user\n");
            return 1;
        }

        QWidget window;
        window.resize(1200, 800);
        auto* page = new CDuplicatePatientPage();
        page->Create(&window, CRect(0, 0, 1200, 800), 1);
        CDuplicatePatientList* list = page->GetList();

        std::vector<double> populate;
        std::vector<double> sort;
        page->DisplayItems(); // warm caches once
        for (int r = 0; r < runs; ++r) {
            populate.push_back(timeMs([&] { page->DisplayItems(); }));
            sort.push_back(timeMs([&] { list->HandleColumnClicked(CDuplicatePatientList::eDOB); }));
        }
        std::printf("rows %d\n", list->GetItemCount());
        std::printf("results \"%s\"\n", page->GetResultsText().GetString());
        std::printf("populate_200_ms %.3f\n", median(populate));
        std::printf("sort_200_ms %.3f\n", median(sort));
        if (list->GetItemCount() == 0)
            exitCode = 1;
        archive->Uninstall();
    }
    if (temporary) {
        std::error_code ec;
        std::filesystem::remove(archivePath, ec);
        std::filesystem::remove(archivePath + "-wal", ec);
        std::filesystem::remove(archivePath + "-shm", ec);
    }
    return exitCode;
}
