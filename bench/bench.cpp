#include <malloc.h>

#include <cstdlib>
#include <fstream>

#include "baseline.h"
#include "table.h"
#include "varo_work.h"

// Every row of the table: what is done, at which sizes, by whom.

namespace bench {

namespace {

using Sizes = std::vector<long>;
using WorkOf = Work (*)(MakeContestant, WorkloadPointer const&);
using MakeWorkload = WorkloadPointer (*)(long size);

using Prepare = std::function<Work(long size)>;

/// All work, by "row/contestant".
std::map<std::string, Prepare>& allWork() {
    static std::map<std::string, Prepare> work;
    return work;
}

/// Registers the work once per size. It is prepared, and its answers are checked, before the first
/// repetition is timed.
void add(std::string const& row, std::string const& contestant, Sizes const& sizes,
         Prepare const& prepare) {
    std::string const name = row + "/" + contestant;
    allWork()[name] = prepare;
    for (long const size : sizes) {
        auto const run = [prepare, size, work = std::make_shared<Work>()](benchmark::State& state) {
            try {
                if (!*work) {
                    *work = prepare(size);
                }
                for (auto unused : state) {
                    (*work)();
                }
            } catch (std::exception const& exception) {
                state.SkipWithError(exception.what());
            }
        };
        benchmark::RegisterBenchmark((name + "/" + std::to_string(size)).c_str(), run);
    }
}

/// Registers contestants on a workload that they share.
class Race {
public:
    Race(std::string row, WorkOf workOf, MakeWorkload makeWorkload)
        : m_row(std::move(row)), m_workOf(workOf), m_makeWorkload(makeWorkload) {}

    Race& varoAndBaseline(Sizes const& sizes, MakeContestant baseline = make<Baseline>) {
        enter("varo", make<Varo>, sizes);
        enter("baseline", baseline, sizes);
        return *this;
    }

    Race& others(Sizes const& sizes, bool abbreviated = false) {
        for (Peer const& peer : peers()) {
            if (peer.abbreviates || !abbreviated) {
                enter(peer.name, peer.make, sizes);
            }
        }
        return *this;
    }

private:
    void enter(std::string const& contestant, MakeContestant make, Sizes const& sizes) {
        add(m_row, contestant, sizes,
            [workOf = m_workOf, makeWorkload = m_makeWorkload, workloads = m_workloads,
             make](long size) {
                WorkloadPointer& workload = (*workloads)[size];
                workload = workload ? workload : makeWorkload(size);
                return workOf(make, workload);
            });
    }

    std::string m_row;
    WorkOf m_workOf;
    MakeWorkload m_makeWorkload;
    std::shared_ptr<std::map<long, WorkloadPointer>> m_workloads =
        std::make_shared<std::map<long, WorkloadPointer>>();
};

WorkloadPointer tool(long) {
    return toolWorkload();
}

/// Checks that baseline and library lay out the same letters, and returns the baseline's work.
Work baselineHelp(long count) {
    WorkloadPointer const workload = manyDescriptions(count);
    auto const letters = [](std::string text) {
        std::erase_if(text, [](char byte) { return byte == ' ' || byte == '\n'; });
        return text;
    };
    require(letters(wrapHelp(*workload)) == letters(Varo(*workload).help()), "another help");
    return [workload] { benchmark::DoNotOptimize(wrapHelp(*workload)); };
}

void addRaces() {
    Race("whole", wholeWork, tool).varoAndBaseline({1}).others({1});
    Race("parse", parseWork, tool).varoAndBaseline({1}).others({1});
    Race("declare", wholeWork, [](long n) { return manyOptions(n, 10, false); })
        .varoAndBaseline({10, 100, 1000, 5000})
        .others({1000});
    Race("against", parseWork, [](long n) { return manyOptions(n, 10, false); })
        .varoAndBaseline({10, 100, 1000, 5000})
        .others({1000});
    Race("arguments", parseWork, [](long n) { return manyArguments(n, false, Source::arguments); })
        .varoAndBaseline({1000, 10'000, 100'000, 1'000'000})
        .others({10'000});
    Race("rest", parseWork, [](long n) {
        return manyArguments(n, true, Source::arguments);
    }).varoAndBaseline({100'000, 1'000'000});
    Race("stream", parseWork, [](long n) {
        return manyArguments(n, false, Source::stream);
    }).varoAndBaseline({100'000, 1'000'000});
    Race("file", parseWork, [](long n) {
        return manyArguments(n, false, Source::file);
    }).varoAndBaseline({100'000, 1'000'000});
    Race("names", parseWork, [](long n) { return manyOptions(1000, n, false); })
        .varoAndBaseline({10'000})
        .others({10'000});
    Race("abbreviations", parseWork, [](long n) { return manyOptions(1000, n, true); })
        .varoAndBaseline({10'000}, make<AbbreviatingBaseline>)
        .others({10'000}, true);
}

void addOwnRows() {
    add("memory", "varo", {}, [](long n) {
        auto const workload = manyArguments(n, false, Source::arguments);
        return Work([workload] {
            Answer answer(false);
            Varo(*workload).parse(*workload, answer);
        });
    });
    add("walk", "varo", {1000, 10'000, 100'000, 1'000'000}, walkWork);
    add("last", "varo", {1000, 10'000, 100'000, 1'000'000}, lastValueWork);
    add("help", "varo", {20, 1000}, [](long n) { return helpWork(manyDescriptions(n)); });
    add("help", "baseline", {20, 1000}, baselineHelp);
    add("declarations", "varo", {1000, 10'000, 100'000},
        [](long n) { return wholeWork(make<Varo>, manyOptions(n, 10, false)); });
    Sizes const documents = {100, 1000, 10'000};
    add("next", "varo", documents, declarationsWork);
    add("manual", "varo", documents, manualWork);
    add("terminal-help", "varo", documents, terminalHelpWork);
    add("json", "varo", documents, jsonWork);
    add("replay", "varo", {1000, 10'000, 100'000}, replayWork);
    add("plain", "varo", {}, [](long n) { return plainWork(manyOptions(n, 10, false)); });
    add("completion", "varo", {20, 300, 1000},
        [](long n) { return completionWork(manyOptions(n, 10, false)); });
    add("actions", "varo", {10, 100, 1000}, actionsWork);
    add("description", "varo", {100'000, 1'000'000, 10'000'000}, longDescriptionWork);
    add("ambiguous", "varo", {200, 2000, 20'000}, ambiguousWork);
    Sizes const forced = {100, 1000, 10'000};
    add("deprecating", "varo", forced, deprecatingWork);
    add("deprecated", "varo", forced, deprecatedWork);
    add("allowed", "varo", forced, allowedWork);
    add("group", "varo", forced, groupWork);
    add("shared-names", "varo", forced, sharedNamesWork);
    add("shared-name", "varo", forced, sharedNameWork);
    add("tags", "varo", forced, tagsWork);
}

std::vector<Row> const kRows = {
    {"whole", "15 declarations, 12 arguments: create, declare, parse, query, destroy", 6},
    {"parse", "the same, parse and query alone", 4.5},
    {"declare", "declare 10 to 5,000 options, parse 10 of them", 5, 0, 1.15},
    {"against", "parse 10 arguments against 10 to 5,000 options", 5, 0, 0.1},
    {"arguments", "1,000 to 1M arguments, half options, half positional", 2.5, 0, 1.15},
    {"rest", "100k and 1M arguments, one positional that takes the rest", 2.5, 0, 1.15},
    {"stream", "parseStream of 100k and 1M lines", 2.5, 0, 1.15},
    {"file", "an option file of 100k and 1M lines", 2.5, 0, 1.15},
    {"names", "10,000 arguments, 1,000 options, full names", 2.5, 0.15},
    {"abbreviations", "10,000 arguments, 1,000 options, abbreviations", 1.5, 0.05},
    {"walk", "walk 1,000 to 1M values of one option", 0, 0, 1.15},
    {"last", "getLastValue of 1,000 to 1M values", 0, 0, 1.15},
    {"help", "general help for 20 and 1,000 options", 2.5, 0, 1.15},
    {"declarations", "100,000 options", 0, 0, 1.15, 1},
    {"completion", "declare 20 to 1,000 options, complete a line", 0, 0, 1.15},
    {"actions", "1,000 actions whose modifiers share one name", 0, 0, 1.15, 1},
    {"description", "help with a description of 10 MB", 0, 0, 1.15, 1},
    {"ambiguous", "20,000 candidates of one ambiguous abbreviation", 0, 0, 1.15, 1},
    {"deprecating", "declare 10,000 deprecated values", 0, 0, 1.15, 1},
    {"deprecated", "10,000 deprecated values, one in each of 10,000 arguments", 0, 0, 1.15, 1},
    {"allowed", "10,000 allowed values, one in each of 10,000 arguments", 0, 0, 1.15, 1},
    {"group", "10,000 actions that are allowed together, all given", 0, 0, 1.15, 1},
    {"shared-names", "10,000 times an abbreviation of 10,000 names of one option", 0, 0, 1.15, 1},
    {"shared-name", "10,000 times an abbreviated name that 10,000 modifiers share", 0, 0, 1.15, 1},
    {"tags", "10,000 times an abbreviated modifier with 10,000 tags", 0, 0, 1.15, 1},
};

/// callgrind counts while this function runs.
extern "C" __attribute__((noinline)) void measured(Work const& work) {
    work();
    asm volatile("");  // keeps the call from becoming a jump
}

/// In bytes. `key` begins a line of the process's status: "VmRSS:" or, for its peak, "VmHWM:".
long residentMemory(std::string_view key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key)) {
            return std::atol(line.c_str() + key.size()) * 1024;
        }
    }
    return 0;
}

/// Does one piece of work once, to have its instructions counted, and prints by how many bytes the
/// process grew meanwhile.
int runOnce(std::string const& name, long size) {
    auto const found = allWork().find(name);
    if (found == allWork().end()) {
        std::fprintf(stderr, "no such work: %s\n", name.c_str());
        return 2;
    }
    Work const work = found->second(size);
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";  // forgets the peak
    long const before = residentMemory("VmRSS:");
    measured(work);
    std::printf("%ld\n", residentMemory("VmHWM:") - before);
    return 0;
}

int runAll(int argc, char** argv) {
    // Interleaved repetitions, so that a busy moment of the machine slows all contestants alike.
    std::vector<std::string> flags = {argv[0], "--benchmark_enable_random_interleaving=true",
                                      "--benchmark_repetitions=9", "--benchmark_min_time=0.02"};
    flags.insert(flags.end(), argv + 1, argv + argc);
    std::vector<char*> pointers;
    for (std::string& flag : flags) {
        pointers.push_back(flag.data());
    }
    int count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    Table table(kRows);
    benchmark::RunSpecifiedBenchmarks(&table);
    return table.print() ? 0 : 1;
}

}  // namespace

}  // namespace bench

/// varo_bench [FLAGS OF GOOGLE BENCHMARK], or varo_bench --once ROW/CONTESTANT SIZE.
int main(int argc, char** argv) {
    // What one repetition frees stays with the process for the next. Otherwise the allocator's
    // thresholds decide who pays the kernel for the same pages again and again.
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    bench::addRaces();
    bench::addOwnRows();
    bool const once = argc == 4 && std::string_view(argv[1]) == "--once";
    return once ? bench::runOnce(argv[2], std::atol(argv[3])) : bench::runAll(argc, argv);
}
