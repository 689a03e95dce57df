// An argument vector for declarations, both from the input. No declaration reads option files.

#include <algorithm>

#include "event_recorder.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::Input input(data, size);
    varo::Flags const flags = input.flags();
    varo::Parser const parser(flags);
    varo::Result const result = parser.createResult();
    fuzz::EventRecorder recorder(input.number());
    parser->addHandler(&recorder);
    for (unsigned count = input.number(6); count > 0; --count) {
        recorder.watch(fuzz::declare(parser, input).primaryName);
    }
    parser->allowSimultaneousActions({"a", "b"});
    std::vector<std::string> const arguments = input.arguments('\0');
    int const code = fuzz::parse(parser, arguments, result.interface());
    recorder.check(code, parser, result);

    // The plain arguments are those after the first end marker; on failure, the first of them.
    auto after = std::find(arguments.begin() + 1, arguments.end(), "--");
    after += after != arguments.end() ? 1 : 0;
    for (char const* const plain : result.arguments()) {
        REQUIRE(after != arguments.end() && *after++ == plain);
    }
    REQUIRE(after == arguments.end() || code != 0 || flags.has(varo::kTakeTheRest));
    return 0;
}
