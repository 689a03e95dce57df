// A part of a program that uses one version of the library; compiled with -DPART=NAME for its
// function.

#include <string>

#include "varo/varo.h"

// Parses "--level=LEVEL", keeps a text as well, and returns the library's version times 10 plus
// LEVEL.
extern "C" int PART(char const* level) {
    varo::Parser parser(varo::kUnknownIsError);
    parser->option("level", "Verbosity", mosaic2::vtS32, "general");
    parser->option("name", "Who", mosaic2::vtString, "general")->defaultValue("nobody");
    varo::Result result = parser.createResult();
    std::string const argument = std::string("--level=") + level;
    char const* const arguments[] = {"part", argument.c_str(), nullptr};
    if (parser.parse(2, const_cast<char**>(arguments), result) != varo::kSuccess ||
        result.last<std::string_view>("name") != "nobody") {
        return -1;
    }
    return varo::libraryVersion() * 10 + result.last<int>("level").value_or(0);
}
