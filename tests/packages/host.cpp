// A small program of somebody else's: host --level=4 --ratio=0.5 FILE ... -- PLAIN ...

#include <cstdio>
#include <string_view>

#include "varo/varo.h"

int main(int argc, char** argv) {
    varo::Parser parser(varo::kUnknownIsError | varo::kDashGuard);
    parser->option("level,l", "Verbosity", mosaic2::vtS32, "general")->defaultValue(3);
    parser->option("ratio", "Of the whole", mosaic2::vtDouble, "general")->allowValue(0.5);
    parser->option("file", "What to read", mosaic2::vtString, "general")->positional();
    parser->allowSimultaneousActions({"read", "write"});
    varo::Result result = parser.createResult();
    if (parser.parse(argc, argv, result) != varo::kSuccess) {
        std::fputs(parser.error(), stderr);
        return 2;
    }
    std::printf("level %d, ratio %g", result.get<int>("level").value_or(0),
                result.last<double>("ratio").value_or(0));
    for (varo::Value const& file : result.values("file")) {
        std::printf(", file %s", file.as<char const*>());
    }
    for (char const* plain : result.arguments()) {
        std::printf(", plain %s", plain);
    }
    std::printf(", first %.3s\n", result.get<std::string_view>("file").value_or("none").data());
    return varo::libraryVersion() == VARO_VERSION ? 0 : 1;
}
