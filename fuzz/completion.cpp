// Declarations and a command line, both from the input; the line is completed in each shell,
// wherever the cursor is, and what is told of it has no control characters and changes nothing.

#include "varo/completion.h"
#include "input.h"
#include "varo/assist.h"

namespace {

/// Offers the rest of the input, and what the option was asked for.
class Source final : public varo::ValueSource {
public:
    explicit Source(std::string text) : m_text(std::move(text)) {}
    void offer(char const* name, char const* typed, varo::ValueOffers& offers) override {
        offers.value((typed + m_text).c_str(), m_text.c_str());
        offers.value(m_text.c_str(), nullptr);
        offers.value(name, name);
        m_text.size() % 3 == 1 ? offers.files() : offers.directories();
    }

private:
    std::string m_text;
};

/// Lines of fields, of which the last says that nothing is missing; or nothing.
void checkAnswer(std::string_view answer) {
    REQUIRE(answer.empty() || answer == "end\n" ||
            (answer.size() > 5 && answer.substr(answer.size() - 5) == "\nend\n"));
    for (char const c : answer) {
        REQUIRE(c == '\n' || c == '\t' || c < 0 || (c >= ' ' && c != '\x7f'));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::Input input(data, size);
    varo::Parser parser(input.flags());
    for (unsigned left = input.number(6); left > 0; --left) {
        fuzz::declare(parser, input);
    }
    parser->allowSimultaneousActions({input.text(), input.text()});
    std::string const left = "tool " + input.text();
    std::string const right = input.text();
    Source source(input.text());
    fuzz::dropTrace();

    std::vector<std::string> const arguments = fuzz::Input(left).arguments(' ');
    fuzz::parse(parser, arguments, nullptr);
    std::string const error = parser.error();
    for (char const* const shell : {"bash", "zsh", "fish"}) {
        char const* const question[] = {"tool",       "varooption=complete", shell,       "tool",
                                        left.c_str(), right.c_str(),         " \t\n\"'=:"};
        for (int count = 2; count <= 7; ++count) {
            char const* const answer =
                varo::completion(parser.interface(), count, question, &source);
            REQUIRE(answer != nullptr);
            checkAnswer(answer);
        }
    }
    std::vector<char const*> argv;
    for (std::string const& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    REQUIRE(varo::errorOrigin(parser.interface()) != nullptr);
    REQUIRE(varo::suggestion(parser.interface()) != nullptr);
    REQUIRE(varo::explanation(parser.interface(), static_cast<int>(argv.size()), argv.data()) !=
            nullptr);
    REQUIRE(parser.error() == error);
    return 0;
}
