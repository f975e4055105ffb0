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

#include "demoarchive.h"
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
    if (!Bench::Options().Text("archive", archivePath).Number("patients", patients).Number("runs", runs).Parse(argc, argv))
        return 2;
    Bench::UseOffscreenUnlessSet();
    QApplication app(argc, argv);

    const Bench::ArchiveFile file(archivePath, "worklist");
    int exitCode = 0;
    {
        std::unique_ptr<Archive> archive = Bench::OpenDemoArchive(file.Path(), patients);
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
        std::printf("populate_200_ms %.3f\n", Bench::Percentile(populate, 0.5));
        std::printf("sort_200_ms %.3f\n", Bench::Percentile(sort, 0.5));
        if (list->GetItemCount() == 0)
            exitCode = 1;
        archive->Uninstall();
    }
    return exitCode;
}
