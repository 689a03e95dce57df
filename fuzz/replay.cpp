// Runs a fuzz target over the files of the directories named, without libFuzzer.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "input.h"

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        for (auto const& entry : std::filesystem::directory_iterator(argv[i])) {
            std::ifstream file(entry.path(), std::ios::binary);
            std::vector<char> const bytes{std::istreambuf_iterator<char>(file), {}};
            auto const* const data = reinterpret_cast<std::uint8_t const*>(bytes.data());
            std::fprintf(stderr, "%s\n", entry.path().c_str());
            LLVMFuzzerTestOneInput(data, bytes.size());
            ++count;
        }
    }
    return count == 0 ? 1 : 0;
}
