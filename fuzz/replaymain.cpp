// Feeds every file of the given folders (or the given files) to the fuzz
// target once, so seed corpora run as ordinary tests without libFuzzer.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {
int RunFile(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "cannot read %s\n", file.c_str());
        return 1;
    }
    const std::vector<char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    int files = 0;
    int failures = 0;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path path(argv[i]);
        if (std::filesystem::is_directory(path)) {
            for (const auto& entry : std::filesystem::directory_iterator(path)) {
                if (entry.is_regular_file()) {
                    failures += RunFile(entry.path());
                    ++files;
                }
            }
        } else {
            failures += RunFile(path);
            ++files;
        }
    }
    std::printf("replayed %d inputs\n", files);
    // An empty corpus is a broken test setup, not a pass.
    return (files == 0 || failures) ? 1 : 0;
}
