#include "varo/program.h"

#include <fcntl.h>
#include <unistd.h>

#include "failing_memory.h"
#include "support.h"

namespace {

using namespace varo_test;

/// What a tool does before its own work, which is status 7. All output goes to `descriptor`.
[[noreturn]] void run(Arguments const& arguments, bool hasValues = false,
                      int descriptor = STDERR_FILENO, long allocations = -1) {
    dup2(descriptor, STDOUT_FILENO);
    std::vector<char const*> argv{"/bin/tool"};
    for (std::string const& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    varo::Parser parser(varo::kUnknownIsError);
    int const type = hasValues ? mosaic2::vtString : mosaic2::vtNull;
    parser->option("h,help", "", static_cast<mosaic2::das_variant_type_t>(type), "");
    parser->option("version", "", static_cast<mosaic2::das_variant_type_t>(type), "");
    parser->addOptionFileOption("", "");
    if (allocations >= 0) {
        memory::failAfter(allocations, memory::kOperatorNew, false);
    }
    varo::parseOrExit(parser, varo::Manual(), static_cast<int>(argv.size()), argv.data());
    std::exit(7);
}

}  // namespace

TEST(Program, EndsAsItsUserExpects) {
    Directory const directory;
    std::string const file = "--option-file=" + directory.write("help", "--help");
    struct {
        Arguments arguments;
        bool hasValues;
        int status;
        char const* output;
    } const rows[] = {
        {{"--nope", "-h"}, false, 0, "^Usage: tool "},
        {{file}, false, 0, "^Usage: tool "},
        {{"--version"}, false, 0, "^tool\n$"},
        {{"--nope"}, false, 2, "^tool: Unknown option: .*\nTry 'tool --help'.\n$"},
        {{"--nope"}, true, 2, "^tool: Unknown option: --nope .argument 1.\n$"},
        {{"--version=1", "--help=topic"}, true, 7, "^$"},
    };
    for (auto const& row : rows) {
        EXPECT_EXIT(run(row.arguments, row.hasValues), testing::ExitedWithCode(row.status),
                    row.output);
    }
}

TEST(Program, TellsWhenItsAnswerIsLost) {
    for (char const* option : {"--help", "--version"}) {
        EXPECT_EXIT(run({option}, false, open("/dev/full", O_WRONLY)), testing::ExitedWithCode(2),
                    "");
    }
}

TEST(Program, EndsWithoutMemory) {
    for (Arguments const& arguments : {Arguments{"--help"}, {"--version"}, {"--nope"}, {}}) {
        for (long allocations = 0; allocations < 40; allocations += 3) {
            EXPECT_EXIT(
                run(arguments, false, STDERR_FILENO, allocations),
                [](int status) { return WIFEXITED(status); },
                arguments.empty() ? "^$|Out of memory" : "Usage|^tool");
        }
    }
    EXPECT_EXIT(run({"--help"}, false, STDERR_FILENO, 0), testing::ExitedWithCode(1),
                "^tool: Out of memory.\n$");
}

TEST(Program, WritesHelpInBoldOnATerminal) {
    auto const writeHelp = [] {
        int const terminal = posix_openpt(O_RDWR | O_NOCTTY);
        grantpt(terminal);
        unlockpt(terminal);
        setenv("TERM", "xterm", 1);
        unsetenv("NO_COLOR");
        dup2(open(ptsname(terminal), O_RDWR | O_NOCTTY), STDOUT_FILENO);
        varo::Parser parser;
        parser->option("level", "", mosaic2::vtS32, "");
        varo::printHelp(parser, varo::HelpLayout());
        std::fflush(stdout);
        char text[1000];
        ssize_t const size = read(terminal, text, sizeof(text));
        std::fwrite(text, 1, size > 0 ? static_cast<std::size_t>(size) : 0, stderr);
        std::exit(0);
    };
    EXPECT_EXIT(writeHelp(), testing::ExitedWithCode(0), "\033\\[1m.*level");
}
