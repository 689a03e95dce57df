// A program whose texts try to be more than text, for linters of the manuals made from them:
//     hostile_manual varooption=manual FORM
//     hostile_manual names        every name that a manual must have, one per line

#include <string>

#include "varo/completion.h"

namespace {

using namespace mosaic2;

constexpr char kMan[] =
    ".SH \"x\"\n'br\n\\fBbold \\(co \\n[.s] \\*[x] \\c\n.\n..\n\\\n\"quoted\" \\\" c";
constexpr char kMarkdown[] =
    "# a\n- b\n1. c\n2) d\n> e\n```\n~~~\n    f\n=====\n-----\n***\n<b>x</b> | `y` [z](w) &amp; "
    "![i](j) **k** _l_ \\\n+ m\n|a|b|\n|-|-|\n<!-- n";

std::string allBytes() {
    std::string text = "All bytes:";
    for (int byte = 1; byte < 256; ++byte) {
        text += static_cast<char>(byte);
    }
    return text;
}

/// One declaration of each kind, with `text` wherever there is one.
void declare(varo::IParser* parser, std::string const& text, std::string const& number) {
    std::string const name = text.substr(0, text.find(',')) + number;
    std::string const section = text.substr(0, text.find(':')) + ":" + text;
    parser->option((name + "o").c_str(), text.c_str(), vtString, section.c_str())
        ->allowValue(text.c_str())
        ->allowDeprecatedValue(text.c_str(), text.c_str())
        ->defaultValue(text.c_str());
    parser->action((name + "a").c_str(), text.c_str(), vtU64, section.c_str())
        ->synonym(text.c_str());
    parser
        ->modifier((name + "m").c_str(), (name + "a").c_str(), text.c_str(), vtBool,
                   section.c_str())
        ->defaultValue(false);
    parser->allowSimultaneousActions({name + "a", "plain"});
}

void printNames(varo::IParser* parser) {
    varo::Declaration const* declaration = nullptr;
    while ((declaration = varo::nextDeclaration(parser, declaration)) != nullptr) {
        for (int number = 0; declaration->isHidden == 0 && number < declaration->nameCount;
             ++number) {
            std::string name = declaration->names[number];
            for (char& byte : name) {
                byte = byte == '\n' ? ' ' : byte;
            }
            std::puts(name.c_str());
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    varo::Parser const parser(varo::kDoubleDashHelp);
    parser->action("plain", "", vtNull, "");
    parser->option("input", "", vtString, "")->positional();
    parser->option("secret", "Hidden", vtString, "varo_hidden");
    std::string const every = allBytes();
    std::string const texts[] = {
        every,
        kMan,
        kMarkdown,
        "",
        " ",
        "\n\n \n",
        ".",
        "'",
        "-",
        "\\",
        "\xC3",
        "\xED\xA0\x80",
        "caf\xC3\xA9 e\xCC\x81 \xE4\xB8\x80\xE4\xB8\x80 \xF0\x9F\x98\x80 \xE2\x80\x8B\xE2\x80\xA8",
        std::string(300, 'w'),
        std::string(200, '.'),
        std::string(200, '\\'),
        std::string(90, '-') + " " + std::string(50, ' ') + "x"};
    for (std::string const& text : texts) {
        declare(parser.interface(), text, std::to_string(&text - texts));
    }
    std::string const all = every + "\n\n" + kMan + "\n  code " + every + "\n\n  .more\n  \n" +
                            kMarkdown + "\n\n  " + std::string(300, 'c') + std::string(90, ' ') +
                            "d";
    varo::Manual about;
    about.name = "hostile`-.\\\"\xC3\xA9\xFF";
    about.summary = ".summary 'of\n \\fBhostile\\fR";
    about.date = "2026-11-21";
    about.version = "\"1\" .2\\";
    about.description = all.c_str();
    about.exitStatus = kMan;
    about.files = kMarkdown;
    about.examples = "  first\n\n    second\n";
    about.seeAlso = every.c_str();
    if (auto const status = varo::answerShell(parser, about, argc, argv)) {
        return *status;
    }
    printNames(parser.interface());
    return 0;
}
