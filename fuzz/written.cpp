// Everything that is written from declarations, for declarations of any kind with any texts: it is
// there, it is printable, and its lines have the columns that were asked for.

#include "documents/display_width.h"
#include "input.h"
#include "varo/documents.h"

namespace {

/// Whether every character is printable, or a line feed; in ASCII, if wanted.
bool isPrintable(std::string_view text, bool inAscii) {
    while (!text.empty()) {
        char32_t code = 0;
        std::size_t const length = varo::internal::readCharacter(text, code);
        bool const isPlain = code == '\n' || !varo::internal::isControl(code);
        if (length == 0 || !isPlain || (inAscii && code >= 0x80)) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

void checkWalk(varo::IParser* parser) {
    varo::Declaration const* declaration = nullptr;
    for (int index = 0; (declaration = varo::nextDeclaration(parser, declaration)) != nullptr;
         ++index) {
        REQUIRE(declaration->index == index && declaration->nameCount > 0);
        REQUIRE(parser->isOptionDeclared(declaration->names[0], declaration->kind == 1, nullptr));
    }
    varo::ActionGroup const* group = nullptr;
    while ((group = varo::nextActionGroup(parser, group)) != nullptr) {
        REQUIRE(group->actionCount >= 0);
    }
}

void checkManual(varo::IParser* parser, std::string const& text) {
    varo::Manual about;
    about.name = "tool";
    about.summary = "do things";
    about.date = "2026-11-21";
    about.version = about.description = about.examples = text.c_str();
    std::string_view const page = varo::manual(parser, &about, varo::kManualPage);
    REQUIRE(page.starts_with(".TH ") && isPrintable(page, true));
    std::string_view const markdown = varo::manual(parser, &about, varo::kManualMarkdown);
    REQUIRE(markdown.starts_with("# tool\n") && isPrintable(markdown, false));
}

void checkHelp(varo::IParser* parser, fuzz::Input& input, std::string const& topic) {
    varo::HelpLayout layout;
    layout.columns = 20 + static_cast<int>(input.number());
    layout.hidden = static_cast<int>(input.number(2));
    layout.topic = input.number(2) == 0 ? nullptr : topic.c_str();
    std::string_view help = varo::helpText(parser, &layout);
    REQUIRE(isPrintable(help, false));
    while (!help.empty()) {
        std::string_view const line = help.substr(0, help.find('\n'));
        REQUIRE(line.size() < help.size());  // the last one ends too
        REQUIRE(varo::internal::displayWidth(line) < layout.columns);
        help.remove_prefix(line.size() + 1);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::Input input(data, size);
    varo::Parser const parser(input.flags());
    parser->setReplace(input.number(2) == 1);
    std::string const text = input.text();
    std::string lastName;
    while (!input.isEmpty()) {
        lastName = fuzz::declare(parser, input).primaryName;
        parser->allowSimultaneousActions({lastName, text});
    }
    fuzz::Input choices(text);
    checkWalk(parser.interface());
    checkManual(parser.interface(), text);
    checkHelp(parser.interface(), choices, lastName);
    REQUIRE(*parser.error() == '\0');
    return 0;
}
