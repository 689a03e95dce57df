#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>

#include "varo_work.h"

// Does one piece of work of one size, once, so that its instructions can be counted, and prints by
// how many bytes the process grew meanwhile.

namespace bench {

namespace {

/// callgrind counts while this function runs.
extern "C" __attribute__((noinline)) void measured(Work const& work) {
    work();
    asm volatile("");  // keeps the call from becoming a jump
}

Work parseArguments(long count, bool takeTheRest, Source source) {
    return parseWork(make<Varo>, manyArguments(count, takeTheRest, source));
}

/// The first parse of many arguments; the others measure the second.
Work firstParse(long count) {
    return [workload = manyArguments(count, false, Source::arguments)] {
        Answer answer(true);
        Varo(*workload).parse(*workload, answer);
        require(answer == workload->expected, "wrong answer");
    };
}

std::map<std::string, Work (*)(long)> const kCases = {
    {"first-parse", firstParse},
    {"arguments", [](long n) { return parseArguments(n, false, Source::arguments); }},
    {"rest", [](long n) { return parseArguments(n, true, Source::arguments); }},
    {"stream", [](long n) { return parseArguments(n, false, Source::stream); }},
    {"file", [](long n) { return parseArguments(n, false, Source::file); }},
    {"declare", [](long n) { return wholeWork(make<Varo>, manyOptions(n, 10, false)); }},
    {"against", [](long n) { return parseWork(make<Varo>, manyOptions(n, 10, false)); }},
    {"names", [](long n) { return parseWork(make<Varo>, manyOptions(n, n, false)); }},
    {"abbreviations", [](long n) { return parseWork(make<Varo>, manyOptions(n, n, true)); }},
    {"walk", walkWork},
    {"last-value", lastValueWork},
    {"help", [](long n) { return helpWork(manyDescriptions(n)); }},
    {"description", longDescriptionWork},
    {"actions", actionsWork},
    {"ambiguous", ambiguousWork},
};

/// In bytes; `key` is a line of the process's status, "VmRSS:" or, for its peak, "VmHWM:".
long residentMemory(std::string_view key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key)) {
            return std::atol(line.c_str() + key.size()) * 1024;
        }
    }
    return 0;
}

void forgetPeak() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";
}

}  // namespace

}  // namespace bench

int main(int argc, char** argv) {
    auto const found = bench::kCases.find(argc == 3 ? argv[1] : "");
    if (found == bench::kCases.end()) {
        std::fputs("usage: varo_growth CASE SIZE\n", stderr);
        return 2;
    }
    bench::Work const work = found->second(std::atol(argv[2]));
    bench::forgetPeak();
    long const before = bench::residentMemory("VmRSS:");
    bench::measured(work);
    std::printf("%ld\n", bench::residentMemory("VmHWM:") - before);
}
