#pragma once

// What the benchmarks share: their command line, a scratch archive named
// after the process (so runs side by side never share one), times and
// percentiles.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>
#include <unistd.h>

namespace Bench {

using Clock = std::chrono::steady_clock;

// Milliseconds from a to b.
inline double Ms(Clock::time_point a, Clock::time_point b)
{
    return std::chrono::duration<double, std::milli>(b - a).count();
}

// The value at fraction p of the sorted sample (0.5 the median).
inline double Percentile(std::vector<double> v, double p)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0.0 : v[std::min(v.size() - 1, static_cast<size_t>(p * static_cast<double>(v.size())))];
}

// "--name value" options: whole numbers (at least their minimum) and texts.
class Options
{
public:
    Options& Number(const char* name, int& value, int minimum = 1)
    {
        m_options.push_back({name, &value, nullptr, minimum});
        return *this;
    }
    Options& Text(const char* name, std::string& value)
    {
        m_options.push_back({name, nullptr, &value, 0});
        return *this;
    }
    // False, after printing the usage line, on anything it does not know.
    bool Parse(int argc, char** argv) const
    {
        for (int i = 1; i < argc; ++i) {
            const Option* found = nullptr;
            for (const Option& o : m_options)
                if (argv[i] == std::string("--") + o.name && i + 1 < argc)
                    found = &o;
            if (!found)
                return Usage(argv[0]);
            if (found->number)
                *found->number = std::max(found->minimum, std::atoi(argv[++i]));
            else
                *found->text = argv[++i];
        }
        return true;
    }

private:
    struct Option
    {
        const char* name;
        int* number;
        std::string* text;
        int minimum;
    };
    bool Usage(const char* program) const
    {
        std::string line = std::string("usage: ") + program;
        for (const Option& o : m_options)
            line += std::string(" [--") + o.name + (o.number ? " N]" : " FILE]");
        std::fprintf(stderr, "%s\n", line.c_str());
        return false;
    }
    std::vector<Option> m_options;
};

inline std::string ScratchArchive(const char* bench)
{
    return (std::filesystem::temp_directory_path() /
            ("bravik-bench-" + std::string(bench) + "-" + std::to_string(getpid()) + ".db"))
        .string();
}

// The archive a bench works on: the one given, or a scratch one (named by
// ScratchArchive) that is removed with its log files when the bench ends.
class ArchiveFile
{
public:
    ArchiveFile(std::string given, const char* bench)
        : m_scratch(given.empty()), m_path(m_scratch ? ScratchArchive(bench) : std::move(given))
    {
    }
    ~ArchiveFile()
    {
        if (!m_scratch)
            return;
        std::error_code ec;
        for (const char* suffix : {"", "-wal", "-shm"})
            std::filesystem::remove(m_path + suffix, ec);
    }
    ArchiveFile(const ArchiveFile&) = delete;
    ArchiveFile& operator=(const ArchiveFile&) = delete;

    const std::string& Path() const { return m_path; }

private:
    bool m_scratch; // declared first: it is decided before `given` is moved
    std::string m_path;
};

} // namespace Bench
