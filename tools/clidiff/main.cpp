// varo-clidiff OLD.json NEW.json: whether a program's new command line keeps the promises of its
// old one. Both files hold what describeJson() wrote.

#include <varo/varo.h>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "compare.h"
#include "read_json.h"

namespace {

constexpr int kBroken = 1;
constexpr int kUnusable = 2;

/// One line of a terminal, whatever is in `text`.
std::string line(std::string const& text) {
    return varo::printable(text) + "\n";
}

int complain(std::string const& text) {
    std::fputs(line("varo-clidiff: " + text).c_str(), stderr);
    return kUnusable;
}

/// Throws Fault.
clidiff::CommandLine load(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text;
    bool isRead = file.is_open();
    try {
        text.assign(std::istreambuf_iterator<char>(file), {});
    } catch (std::ios_base::failure const&) {  // of a directory, for one
        isRead = false;
    }
    if (!isRead) {
        throw clidiff::Fault{0, "this file cannot be read"};
    }
    return clidiff::readJson(text);
}

/// Ends the output: with `status`, or with kUnusable if some of it was lost.
int finish(int status) {
    bool const isWritten = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    return isWritten ? status : complain("standard output cannot be written");
}

int print(clidiff::Changes const& changes) {
    for (std::string const& text : changes.breaks) {
        std::fputs(line("broken: " + text).c_str(), stdout);
    }
    for (std::string const& text : changes.additions) {
        std::fputs(line("added: " + text).c_str(), stdout);
    }
    return finish(changes.breaks.empty() ? varo::kSuccess : kBroken);
}

int run(std::vector<std::string> const& paths) {
    std::vector<clidiff::CommandLine> lines;
    for (std::string const& path : paths) {
        try {
            lines.push_back(load(path));
        } catch (clidiff::Fault const& fault) {
            return complain(path + ": byte " + std::to_string(fault.offset) + ": " + fault.reason);
        }
    }
    return print(clidiff::compare(lines[0], lines[1]));
}

}  // namespace

int main(int argc, char** argv) {
    varo::Parser const parser(varo::kUnknownIsError | varo::kDashGuard | varo::kDoubleDashHelp);
    parser->option("file", "Two descriptions of a command line", mosaic2::vtString, "")
        ->positional()
        ->tokenize(0);
    parser->option("help,h", "Show this help", mosaic2::vtNull, "");
    parser->option("version", "Show the version of the library", mosaic2::vtNull, "");

    varo::Result result = parser.createResult();
    if (parser.parse(argc, argv, result) != varo::kSuccess) {
        return complain(std::string(parser.error()) + " Try 'varo-clidiff --help'.");
    }
    if (result.has("help")) {
        std::printf(
            "Usage: varo-clidiff OLD.json NEW.json\n\n"
            "Tells whether every old command line still means the same. Ends with 0 if so,\n"
            "with 1 if something broke, with 2 if a file cannot be used.\n\n%s",
            parser->getDescription(false));
        return finish(varo::kSuccess);
    }
    if (result.has("version")) {
        int const version = varo::libraryVersion();
        std::printf("varo-clidiff %d.%d.%d\n", version / 10000, version / 100 % 100, version % 100);
        return finish(varo::kSuccess);
    }
    std::vector<std::string> paths;
    for (varo::Value const& value : result.values("file")) {
        paths.emplace_back(value.text());
    }
    for (char const* const path : result.arguments()) {
        paths.emplace_back(path);
    }
    if (paths.size() != 2) {
        return complain("Two files are needed. Try 'varo-clidiff --help'.");
    }
    try {
        return run(paths);
    } catch (std::exception const&) {
        return complain("out of memory");
    }
}
