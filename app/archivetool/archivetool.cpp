#include "archivetool.h"

#include <SQLiteCpp/Exception.h>

#include <archivebackup.h>
#include <archivechecker.h>
#include <archivedb.h>
#include <candidatestore.h>
#include <demoseeder.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <ostream>

namespace {

const char* const kUsage =
    "Usage: bravik-archive COMMAND FILE [OPTIONS]\n"
    "\n"
    "Commands:\n"
    "  init FILE                  create a new archive with the site's organizations,\n"
    "                             users, dictionaries and reference data\n"
    "  seed FILE --patients N [--duplicates RATE] [--seed S]\n"
    "                             add N demo patients with exams and studies; RATE\n"
    "                             (0..1, default 0.05) of them get a near-duplicate;\n"
    "                             the same seed gives the same data\n"
    "  stats FILE                 rows per table\n"
    "  check FILE                 integrity check: prints OK or each violation, then\n"
    "                             the audit and journal chain heads\n"
    "  backup FILE DEST           copy the archive to DEST (a new file) as it is at\n"
    "                             one moment, with progress; workstations may go on\n"
    "                             working meanwhile\n"
    "  rebuild-candidates FILE [--block-cap N]\n"
    "                             recompute the kept merge/link candidate pairs,\n"
    "                             with progress; --block-cap first sets the site's\n"
    "                             largest block (2 or more, default 50) whose\n"
    "                             patients are still paired with each other\n"
    "  --help                     this text\n"
    "\n"
    "Exit status: 0 done, 1 failed or violations found, 2 bad usage.\n";

int Usage(std::ostream& err, const std::string& message)
{
    err << "bravik-archive: " << message << "\n\n" << kUsage;
    return 2;
}

bool ParseInt(const std::string& text, long long min, long long max, long long& value)
{
    if (text.empty())
        return false;
    char* end = nullptr;
    errno = 0;
    const long long v = std::strtoll(text.c_str(), &end, 10);
    if (errno != 0 || *end != '\0' || v < min || v > max)
        return false;
    value = v;
    return true;
}

bool ParseRate(const std::string& text, double& value)
{
    if (text.empty())
        return false;
    char* end = nullptr;
    const double v = std::strtod(text.c_str(), &end);
    if (*end != '\0' || !(v >= 0.0 && v <= 1.0))
        return false;
    value = v;
    return true;
}

// An existing file the user can read: checked first for a clear message.
bool Readable(const std::string& path, std::ostream& err)
{
    std::error_code ec;
    if (!std::filesystem::exists(path, ec)) {
        err << "bravik-archive: cannot open '" << path << "': no such file\n";
        return false;
    }
    if (std::filesystem::is_directory(path, ec)) {
        err << "bravik-archive: cannot open '" << path << "': it is a directory\n";
        return false;
    }
    std::ifstream probe(path, std::ios::binary);
    if (!probe) {
        err << "bravik-archive: cannot open '" << path << "': permission denied\n";
        return false;
    }
    return true;
}

int Init(const std::string& path, std::ostream& out, std::ostream& err)
{
    std::error_code ec;
    if (std::filesystem::exists(path, ec) && std::filesystem::file_size(path, ec) > 0) {
        err << "bravik-archive: '" << path << "' already exists; init creates a new archive\n";
        return 1;
    }
    ArchiveDb db(path, ArchiveDb::Mode::OpenOrCreate);
    DemoSeeder(db).SeedSite();
    out << "Created archive " << path << " (schema version " << db.SchemaVersion() << ")\n";
    return 0;
}

int Seed(const std::string& path, const SeedOptions& options, std::ostream& out, std::ostream& err)
{
    ArchiveDb db(path, ArchiveDb::Mode::OpenOrCreate);
    const auto start = std::chrono::steady_clock::now();
    int lastPercent = -1;
    DemoSeeder(db).Seed(options, [&](int done, int total) {
        const int percent = total > 0 ? static_cast<int>(100LL * done / total) : 100;
        if (percent != lastPercent) {
            err << "\rseeding: " << done << " / " << total << " patients (" << percent << "%)" << std::flush;
            lastPercent = percent;
        }
    });
    err << "\n";
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    out << "Seeded " << options.patients << " patients into " << path << " in " << std::fixed
        << std::setprecision(1) << seconds << " s\n";
    return 0;
}

int Stats(const std::string& path, std::ostream& out)
{
    ArchiveDb db(path, ArchiveDb::Mode::ReadOnly);
    out << "schema version " << db.SchemaVersion() << "\n";
    for (const auto& [table, rows] : db.TableRowCounts())
        out << std::left << std::setw(24) << table << std::right << std::setw(12) << rows << "\n";
    return 0;
}

int Check(const std::string& path, std::ostream& out)
{
    ArchiveDb db(path, ArchiveDb::Mode::ReadOnly);
    ArchiveChecker checker(db);
    const auto violations = checker.Run();
    if (violations.empty())
        out << "OK\n";
    for (const auto& v : violations)
        out << v << "\n";
    if (!violations.empty())
        out << violations.size() << (violations.size() == 1 ? " violation\n" : " violations\n");
    // The heads, to be written down elsewhere: a trail rewritten from its
    // first row to its last shows only as a head that differs from the one kept.
    for (const auto& head : checker.ChainHeads())
        out << head << "\n";
    return violations.empty() ? 0 : 1;
}

int RebuildCandidates(const std::string& path, int blockCap, std::ostream& out, std::ostream& err)
{
    ArchiveDb db(path, ArchiveDb::Mode::OpenExisting);
    if (blockCap > 0) {
        CandidateStore(db).SetBlockCap(blockCap);
        out << "Block cap set to " << blockCap << "\n";
    }
    const auto start = std::chrono::steady_clock::now();
    const long long pairs = CandidateStore(db).Rebuild([&](int step, int steps, const char* what) {
        err << "\rrebuilding candidates: step " << step << " / " << steps << " (" << what << ")" << std::flush;
    });
    err << "\n";
    if (pairs < 0) {
        err << "The candidate pairs of " << path << " were not rebuilt: another rebuild took the work over, or the "
            << "patients kept changing. Try again when the archive is quieter.\n";
        return 1;
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    out << "Rebuilt " << pairs << " candidate pairs in " << path << " in " << std::fixed << std::setprecision(1)
        << seconds << " s\n";
    return 0;
}

int Backup(const std::string& path, const std::string& destination, std::ostream& out, std::ostream& err)
{
    const auto start = std::chrono::steady_clock::now();
    int lastPercent = -1;
    const long long pages = ArchiveBackup::Copy(path, destination, [&](long long copied, long long total) {
        const int percent = total > 0 ? static_cast<int>(100 * copied / total) : 100;
        if (percent != lastPercent) {
            err << "\rbacking up: " << copied << " / " << total << " pages (" << percent << "%)" << std::flush;
            lastPercent = percent;
        }
    });
    err << "\n";
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    out << "Backed up " << path << " to " << destination << " (" << pages << " pages) in " << std::fixed
        << std::setprecision(1) << seconds << " s\n";
    return 0;
}

} // namespace

int RunArchiveTool(const std::vector<std::string>& args, std::ostream& out, std::ostream& err)
{
    if (args.empty())
        return Usage(err, "no command given");
    const std::string& command = args[0];
    if (command == "--help" || command == "-h" || command == "help") {
        out << kUsage;
        return 0;
    }
    if (command != "init" && command != "seed" && command != "stats" && command != "check"
        && command != "rebuild-candidates" && command != "backup")
        return Usage(err, "unknown command '" + command + "'");
    if (args.size() < 2 || args[1].empty() || args[1][0] == '-')
        return Usage(err, command + ": missing FILE");
    const std::string& path = args[1];
    if (command == "backup") {
        if (args.size() < 3 || args[2].empty() || args[2][0] == '-')
            return Usage(err, "backup: missing DEST");
        if (args.size() > 3)
            return Usage(err, "backup: unexpected argument '" + args[3] + "'");
    }

    SeedOptions options;
    bool havePatients = false;
    long long blockCap = 0;
    for (size_t i = command == "backup" ? args.size() : 2; i < args.size(); ++i) {
        const std::string& option = args[i];
        if (command == "rebuild-candidates" && option == "--block-cap") {
            const std::string value = i + 1 < args.size() ? args[++i] : std::string();
            if (!ParseInt(value, 2, 1000000, blockCap))
                return Usage(err, "rebuild-candidates: --block-cap wants a whole number from 2 to 1000000, not '" +
                                      value + "'");
            continue;
        }
        if (command != "seed")
            return Usage(err, command + ": unexpected argument '" + option + "'");
        if (i + 1 >= args.size())
            return Usage(err, "seed: " + option + " needs a value");
        const std::string& value = args[++i];
        long long n = 0;
        if (option == "--patients") {
            if (!ParseInt(value, 0, 100000000, n))
                return Usage(err, "seed: --patients wants a whole number from 0 to 100000000, not '" + value + "'");
            options.patients = static_cast<int>(n);
            havePatients = true;
        } else if (option == "--duplicates") {
            if (!ParseRate(value, options.duplicateRate))
                return Usage(err, "seed: --duplicates wants a rate from 0 to 1, not '" + value + "'");
        } else if (option == "--seed") {
            if (!ParseInt(value, 0, std::numeric_limits<long long>::max(), n))
                return Usage(err, "seed: --seed wants a non-negative whole number, not '" + value + "'");
            options.seed = static_cast<std::uint64_t>(n);
        } else {
            return Usage(err, "seed: unknown option '" + option + "'");
        }
    }
    if (command == "seed" && !havePatients)
        return Usage(err, "seed: --patients N is required");

    try {
        if (command == "init")
            return Init(path, out, err);
        if (command == "seed")
            return Seed(path, options, out, err);
        if (!Readable(path, err))
            return 1;
        if (command == "stats")
            return Stats(path, out);
        if (command == "rebuild-candidates")
            return RebuildCandidates(path, static_cast<int>(blockCap), out, err);
        if (command == "backup")
            return Backup(path, args[2], out, err);
        return Check(path, out);
    } catch (const SQLite::Exception& e) {
        // The database's own words go to the log; the user reads why in plain words.
        try {
            ThrowDbFault(command.c_str(), e);
        } catch (const std::exception& readable) {
            err << "bravik-archive: " << readable.what() << "\n";
        }
        return 1;
    } catch (const std::exception& e) {
        err << "bravik-archive: " << e.what() << "\n";
        return 1;
    }
}
