#include <cstdio>
#include <iterator>

#include "varo/parser.h"

// One whole process of a small tool: 15 declarations, a parse, every option queried. It is run
// under callgrind beside empty.cpp, so it does nothing else.

using namespace varo_3_3;

namespace {

void declare(IParser* parser) {
    using namespace mosaic2;
    char const* const general = "general:General options";
    char const* const files = "files:What is worked on";
    parser->option("verbose,v", "Tell what is being done, step by step", vtBool, general);
    parser->option("dry-run,n", "Only tell what would be done", vtBool, general);
    parser->option("force,f", "Replace files that exist already", vtBool, general);
    parser->option("quiet,q", "Tell about errors only", vtBool, general);
    parser->option("color", "Write in colours where the terminal can", vtBool, general);
    parser->option("level,l", "How hard to try, from 0 to 9", vtS32, general)->defaultValue(3);
    parser->option("jobs,j", "How many files are worked on at once", vtS32, general);
    parser->option("depth,d", "How deep to look into directories", vtS32, general);
    parser->option("limit", "How many lines to show at most", vtS32, general);
    parser->option("output,o", "The file that takes the result", vtString, files);
    parser->option("include,I", "A pattern of files to look at", vtString, files);
    parser->option("exclude,X", "A pattern of files to pass over", vtString, files);
    parser->option("file", "A file to work on", vtString, files)->positional();
    parser->option("scale,s", "The factor for all sizes", vtDouble, general);
    parser->option("format,F", "How the result is written", vtString, general)
        ->allowValue("table")
        ->allowValue("csv")
        ->allowValue("json")
        ->allowValue("list");
}

/// The number of options that have a value.
int queryAll(IParseResult* result) {
    static char const* const names[] = {"verbose", "dry-run", "force", "quiet", "color",
                                        "level",   "jobs",    "depth", "limit", "output",
                                        "include", "exclude", "file",  "scale", "format"};
    int given = 0;
    for (char const* const name : names) {
        given += result->get(name, kFirstPosition, kNoPosition).value().m_type != mosaic2::vtNull;
    }
    return given;
}

}  // namespace

int main() {
    static char const* const argv[] = {
        "start_up",        "--verbose",   "--dry-run",
        "--force",         "--color",     "--level=3",
        "--jobs=8",        "--depth=12",  "--output=build/summary.txt",
        "--include=src/*", "--scale=1.5", "--format=json",
        "docs/guide.txt"};
    int const argc = static_cast<int>(std::size(argv));
    IParser* parser = nullptr;
    createParser(&parser, kUnknownIsError | kDoubleDashHelp);
    declare(parser);
    IParseResult* result = nullptr;
    parser->createResult(&result);
    int const code = parser->parseArgsVector(argc, argv, result);
    if (code != kSuccess) {
        std::fputs(parser->getErrorDesc(), stderr);
    }
    int const given = queryAll(result);
    result->destroy();
    parser->destroy();
    return code == kSuccess && given == argc - 1 ? 0 : 1;
}
