// Random words through what helps the person at the terminal, for declarations from the input. A
// walk over the words must find what a parse finds up to its first mistake.

#include "varo/assist.h"
#include "assist/walk.h"
#include "event_recorder.h"

namespace {

using varo_3_3::internal::Walk;
using varo_3_3::internal::WalkedWord;

/// Notes the dashed options and the unknown arguments of a parse.
class Notes final : public varo::EventHandler {
public:
    bool onOptionParse(char const* name) override {
        m_events += std::string("option ") + name + '\n';
        return true;
    }
    bool onUknownArgument(char const* argument) override {
        m_events += std::string("unknown ") + argument + '\n';
        return true;
    }

    std::string m_events;
};

/// One line of text, without a byte that a terminal would act upon.
void requireLine(std::string_view line) {
    for (char const byte : line) {
        REQUIRE(static_cast<unsigned char>(byte) >= 0x20 && byte != 0x7F);
    }
}

/// All that a result holds of the names.
std::string contentsOf(varo::IParseResult& result, std::vector<std::string> const& names) {
    std::string contents;
    for (std::string const& name : names) {
        contents += result.present(name.c_str(), 0, varo::kNoPosition) ? "present " : "absent ";
        while (result.nextPosition() != varo::kNoPosition) {
            varo::Value const value = result.next(name.c_str());
            contents += value.text();
            contents += ' ' + std::to_string(value.value().m_type) + ' ';
        }
    }
    char const* text = nullptr;
    for (int code = result.getFirstArgument(&text); code == 0;
         code = result.getNextArgument(&text)) {
        contents += std::string("plain ") + text + '\n';
    }
    return contents;
}

void compare(varo::Parser const& parser, int code, Walk& walk, Notes const& notes,
             varo::IParseResult& result, std::vector<std::string> const& names) {
    std::string events;
    bool isWrong = false;
    std::string message;
    auto const& words = walk.words();
    for (std::size_t at = 0; at < words.size() && !isWrong; ++at) {
        WalkedWord const& word = words[at];
        bool const isNextWrong = at + 1 < words.size() &&
                                 words[at + 1].kind == WalkedWord::kValue && words[at + 1].isWrong;
        if (word.kind == WalkedWord::kUnknown) {
            events += "unknown " + std::string(word.text) + '\n';
        } else if (word.kind == WalkedWord::kOption && !word.isWrong && !isNextWrong) {
            events += "option " + std::string(word.option->firstName()) + '\n';
        }
        isWrong = word.isWrong;
        message = word.message;
    }
    if (isWrong) {
        // The event of an option comes before its value is found wrong.
        REQUIRE(code == varo::kParseError && message == parser.error());
        REQUIRE(notes.m_events.rfind(events, 0) == 0);
        return;
    }
    REQUIRE(events == notes.m_events);
    REQUIRE(contentsOf(walk.result(), names) == contentsOf(result, names));
    varo_3_3::ActionVerdict const verdict = walk.judge();
    REQUIRE((verdict.kind == varo_3_3::ActionVerdict::kFits) == (code == varo::kSuccess));
    REQUIRE(code != varo::kParseError || textOf(verdict) == parser.error());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::dropTrace();
    fuzz::Input input(data, size);
    varo::Parser const parser(input.flags());
    input.number();  // which lets the inputs of the target "arguments" serve here too
    varo::Result const result = parser.createResult();
    Notes notes;
    parser->addHandler(&notes);
    std::vector<std::string> names;
    for (unsigned count = input.number(6); count > 0; --count) {
        names.push_back(fuzz::declare(parser, input).primaryName);
    }
    parser->allowSimultaneousActions({"a", "b"});
    std::vector<std::string> const arguments = input.arguments('\0');
    int const code = fuzz::parse(parser, arguments, result.interface());
    std::string const error = parser.error();

    std::vector<char const*> argv;
    for (std::string const& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    varo_3_3::ArgumentVector source(argv.data() + 1, argv.size() - 1);
    Walk walk(*varo_3_3::basicParserOf(parser.interface()));
    walk.take(source);
    if (argv.size() > 1) {  // without arguments a parse asks nothing about actions
        compare(parser, code, walk, notes, *result.interface(), names);
    }

    requireLine(varo::suggestion(parser.interface()));
    REQUIRE(code != varo::kSuccess || *varo::errorOrigin(parser.interface()) == '\0');
    std::string_view explained =
        varo::explanation(parser.interface(), static_cast<int>(argv.size()), argv.data());
    std::size_t lines = 0;
    for (; !explained.empty(); ++lines) {
        requireLine(explained.substr(0, explained.find('\n')));
        explained.remove_prefix(explained.find('\n') + 1);
    }
    REQUIRE(lines == walk.words().size() || lines == walk.words().size() + 1);
    REQUIRE(error == parser.error());
    return 0;
}
