#include "workload.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <numeric>

namespace bench {

namespace {

std::vector<Declaration> toolDeclarations() {
    return {{"verbose", 'v', Kind::boolean, "Tell what is being done, step by step"},
            {"dry-run", 'n', Kind::boolean, "Only tell what would be done"},
            {"force", 'f', Kind::boolean, "Replace files that exist already"},
            {"quiet", 'q', Kind::boolean, "Tell about errors only"},
            {"color", 0, Kind::boolean, "Write in colours where the terminal can"},
            {"level", 'l', Kind::integer, "How hard to try, from 0 to 9"},
            {"jobs", 'j', Kind::integer, "How many files are worked on at once"},
            {"depth", 'd', Kind::integer, "How deep to look into directories"},
            {"limit", 0, Kind::integer, "How many lines to show at most"},
            {"output", 'o', Kind::text, "The file that takes the result"},
            {"include", 'I', Kind::text, "A pattern of files to look at"},
            {"exclude", 'X', Kind::text, "A pattern of files to pass over"},
            {"file", 0, Kind::text, "A file to work on", true},
            {"scale", 's', Kind::real, "The factor for all sizes"},
            {"format",
             'F',
             Kind::text,
             "How the result is written",
             false,
             {"table", "csv", "json", "list"}}};
}

/// Five letters that differ for all indices below 26^5, in no order.
std::string scrambledName(long index) {
    long number = (index + 1) * 7368787 % (26L * 26 * 26 * 26 * 26);
    std::string name(5, 'a');
    for (char& letter : name) {
        letter = static_cast<char>('a' + number % 26);
        number /= 26;
    }
    return name;
}

std::shared_ptr<Workload> workloadFor(std::vector<Declaration> declarations) {
    auto workload = std::make_shared<Workload>();
    workload->declarations = std::move(declarations);
    workload->queries.resize(workload->declarations.size());
    std::iota(workload->queries.begin(), workload->queries.end(), 0U);
    return workload;
}

WorkloadPointer finished(std::shared_ptr<Workload> const& workload) {
    workload->argv.reserve(workload->arguments.size() + 1);
    for (std::string const& argument : workload->arguments) {
        workload->argv.push_back(argument.c_str());
    }
    workload->argv.push_back(nullptr);
    return workload;
}

void writeLines(Workload& workload) {
    for (std::size_t index = 1; index < workload.arguments.size(); ++index) {
        workload.lines.append(workload.arguments[index]).append("\n");
    }
    if (workload.source == Source::file) {
        int const file = memfd_create("option-file", 0);  // gone with the process
        require(write(file, workload.lines.data(), workload.lines.size()) ==
                    static_cast<ssize_t>(workload.lines.size()),
                "cannot write the option file");
        workload.path = "/proc/self/fd/" + std::to_string(file);
    }
}

void check(Contestant& contestant, Workload const& workload) {
    Answer answer(true);
    contestant.parse(workload, answer);
    require(answer == workload.expected, "wrong answer");
}

}  // namespace

WorkloadPointer toolWorkload() {
    auto const workload = workloadFor(toolDeclarations());
    workload->arguments = {"program",         "--verbose",   "--dry-run",
                           "--force",         "--color",     "--level=3",
                           "--jobs=8",        "--depth=12",  "--output=build/summary.txt",
                           "--include=src/*", "--scale=1.5", "--format=json",
                           "docs/guide.txt"};
    for (long const number : {1, 1, 1, 1, 3, 8, 12}) {
        workload->expected.add(number);
    }
    workload->expected.add(1.5);
    for (char const* const text : {"build/summary.txt", "src/*", "json", "docs/guide.txt"}) {
        workload->expected.add(text);
    }
    return finished(workload);
}

WorkloadPointer manyArguments(long count, bool takeTheRest, Source source) {
    auto const workload = workloadFor(toolDeclarations());
    workload->takeTheRest = takeTheRest;
    workload->source = source;
    workload->arguments.reserve(static_cast<std::size_t>(count) + 1);
    char const* const formats[] = {"source/file-%08ld", "--include=head-%05ld", "target/file-%08ld",
                                   "--exclude=temp-%05ld"};
    for (long index = 0; index < count; ++index) {
        char text[32];
        std::snprintf(text, sizeof text, formats[index % 4], index % 100000);
        workload->arguments.push_back(text);
        bool const whole = takeTheRest || index % 2 == 0;
        workload->expected.add(whole ? text : std::strchr(text, '=') + 1);
    }
    if (source != Source::arguments) {
        writeLines(*workload);
    }
    return finished(workload);
}

WorkloadPointer manyOptions(long count, long arguments, bool abbreviated) {
    std::vector<Declaration> declarations;
    for (long index = 0; index < count; ++index) {
        std::string const name = scrambledName(index);
        declarations.push_back(
            {name + "-size", 0, Kind::text, "The greatest size of what is called " + name});
    }
    auto const workload = workloadFor(std::move(declarations));
    workload->queries.clear();
    for (long index = 0; index < arguments; ++index) {
        long const option = index * 7919 % count;
        std::string const name = scrambledName(option) + (abbreviated ? "=" : "-size=");
        std::string const value = "value-" + std::to_string(index);
        workload->arguments.push_back("--" + name + value);
        workload->expected.add(value);
        if (index < count) {
            workload->queries.push_back(static_cast<unsigned>(option));
        }
    }
    return finished(workload);
}

WorkloadPointer manyDescriptions(long count) {
    auto const workload = std::make_shared<Workload>(*manyOptions(count, 0, false));
    char const* const words[] = {"which", "the",  "size",    "of",    "directories", "whenever",
                                 "a",     "file", "becomes", "older", "than",        "limits"};
    for (std::size_t index = 0; index < workload->declarations.size(); ++index) {
        std::string& text = workload->declarations[index].description;
        for (std::size_t word = index; text.size() < 200; word += 5) {
            text.append(" ").append(words[word % std::size(words)]);
        }
        text.resize(199);
        text.push_back('.');
    }
    std::sort(workload->declarations.begin(), workload->declarations.end(),
              [](Declaration const& a, Declaration const& b) { return a.name < b.name; });
    return workload;
}

Work wholeWork(MakeContestant make, WorkloadPointer const& workload) {
    check(*make(*workload), *workload);
    return [make, workload] {
        Answer answer(false);
        make(*workload)->parse(*workload, answer);
    };
}

Work parseWork(MakeContestant make, WorkloadPointer const& workload) {
    std::shared_ptr<Contestant> const contestant = make(*workload);
    check(*contestant, *workload);
    return [contestant, workload] {
        Answer answer(false);
        contestant->parse(*workload, answer);
    };
}

}  // namespace bench
