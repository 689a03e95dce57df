// Declarations and an argument vector, both from the input; what was given is written down in both
// forms and given again.

#include <algorithm>

#include "input.h"
#include "varo/documents.h"

namespace {

/// All that a result holds of the parser's options, in its order, and its plain arguments.
std::string contentsOf(varo::Parser const& parser, varo::Result const& result) {
    std::vector<std::pair<int, std::string>> events;
    varo::Declaration const* declaration = nullptr;
    while ((declaration = varo::nextDeclaration(parser.interface(), declaration)) != nullptr) {
        for (int number = 0; number < declaration->nameCount; ++number) {
            char const* const name = declaration->names[number];
            for (int from = 0; from != varo::kNoPosition;) {
                varo::Value const first = result.interface()->get(name, from, varo::kNoPosition);
                from = first.position() < from ? varo::kNoPosition : first.position();
                if (from != varo::kNoPosition) {
                    events.emplace_back(from++, std::string(name) + " given");
                }
            }
            for (varo::Value const& value : result.values(name)) {
                events.emplace_back(value.position(), std::string(name) + "=" + value.text());
            }
        }
    }
    std::stable_sort(events.begin(), events.end(),
                     [](auto const& left, auto const& right) { return left.first < right.first; });
    std::string contents;
    for (auto const& [position, event] : events) {
        contents += event + "\n";
    }
    for (char const* const argument : result.arguments()) {
        contents += std::string(argument) + "\n";
    }
    return contents;
}

/// Takes shell words apart that are quoted as the library does it.
std::vector<std::string> unquote(std::string_view text) {
    std::vector<std::string> words{"tool", ""};
    bool isQuoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\'') {
            isQuoted = !isQuoted;
        } else if (!isQuoted && text[at] == ' ') {
            words.emplace_back();
        } else {
            at += !isQuoted && text[at] == '\\' ? 1 : 0;
            words.back() += text[at];
        }
    }
    return words;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::dropTrace();
    fuzz::Input input(data, size);
    varo::Flags const flags = input.flags();
    varo::Parser const parser(flags);
    for (unsigned count = input.number(6); count > 0; --count) {
        fuzz::declare(parser, input);
    }
    varo::Result const given = parser.createResult();
    fuzz::parse(parser, input.arguments('\0'), given.interface());
    std::string const contents = contentsOf(parser, given);

    std::string const lines = varo::toOptionFile(parser.interface(), given.interface());
    if (!lines.empty()) {
        varo::Result const again = parser.createResult();
        fuzz::parse(parser, {"tool"}, again.interface());
        parser->parseStream(lines.c_str(), again.interface());
        REQUIRE(contentsOf(parser, again) == contents);
    }
    std::string const words =
        varo::toOptionFile(parser.interface(), given.interface(), varo::kShellWords);
    if (!words.empty()) {
        varo::Result const again = parser.createResult();
        fuzz::parse(parser, unquote(words), again.interface());
        REQUIRE(contentsOf(parser, again) == contents);
    }
    return 0;
}
