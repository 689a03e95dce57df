// How dirstat uses the library, from top to bottom: listen, declare, complete, help, parse, query.
// What the tool does with the answers is in dirstat.cpp.

#include <varo/completion.h>
#include <varo/program.h>
#include <varo/varo.h>

#include <cstdio>

#include "dirstat.h"

// The words for the values of an enumeration are the values that an option of that type accepts,
// or the beginning of just one of them.
template <>
struct varo::Words<Key> {
    static constexpr varo::Word<Key> list[] = {{"extension", Key::extension},
                                               {"directory", Key::directory}};
};

template <>
struct varo::Words<Format> {
    static constexpr varo::Word<Format> list[] = {
        {"table", Format::table}, {"csv", Format::csv}, {"json", Format::json}};
};

template <>
struct varo::Words<Order> {
    static constexpr varo::Word<Order> list[] = {
        {"bytes", Order::bytes}, {"files", Order::files}, {"name", Order::name}};
};

namespace {

// A handler is told of options, values and unknown arguments in the order of the command line.
// This one takes notes, since --verbose may be the last word of all.
class Notes final : public varo::EventHandler {
public:
    bool onOptionParse(char const* name) override { return add("option ", name); }
    bool onValueParse(char const* name, varo::Value const& value) override {
        return add("value of ", name + (": " + std::string(value.text())));  // false refuses it
    }
    bool onUknownArgument(char const* argument) override {
        return add("unknown: ", argument);  // false lets it pass
    }
    std::string const& text() const { return m_text; }

private:
    bool add(char const* event, std::string const& subject) {
        m_text += event + varo::printable(subject) + "\n";
        return true;
    }

    std::string m_text;
};

// What the command line may have. Each member is a declaration, and what a result is asked with.
struct Options {
    explicit Options(varo::Parser& declaring) : parser(declaring) {
        // A command line has one action, but for --scan --help, which asks what --scan can do.
        parser.allowTogether(help | scan);
        parser.allowTogether(help | report);
        parser->addOptionFileOption("Take further arguments from this file, one a line", "");
    }

    varo::Parser& parser;

    // Actions say what the tool does. These take no value.
    varo::Action<void> const scan =
        parser.action<void>("scan", "Sum up the files of directories, by default of this one");
    varo::Action<void> const report =
        parser.action<void>("report", "Sum up the files of one saved scan");
    varo::Action<void> const help = parser.action<void>("help,h", "Explain dirstat or a topic");
    varo::Action<void> const expert = parser.action<void>("expert", "List the options for experts");

    // Modifiers go with the actions that they name, and with no others. The positional one takes
    // every argument without a dash. Values are split at ',' unless they are whole, as paths are.
    varo::Option<std::string> const path =
        parser.modifier<std::string>("path", scan | report, "").positional().whole();
    varo::Option<unsigned> const depth =
        parser.modifier<unsigned>("depth", scan, "Levels of subdirectories to enter; else all");
    varo::Option<std::string> const match = parser.modifier<std::string>(
        "match,m", scan, "Name patterns of the files to count, such as '*.h,*.cpp'");
    varo::Option<std::string> const save =
        parser.modifier<std::string>("save", scan, "Keep the scan in this file, for --report")
            .whole();

    // A default is the answer until the option is given. A deprecated value is replaced, with a
    // warning.
    varo::DefaultedOption<Key> const by =
        parser.modifier<Key>("by", scan | report, "What to sum up by")
            .defaultValue(Key::extension)
            .deprecated("folder", Key::directory);
    varo::DefaultedOption<Format> const format =
        parser.modifier<Format>("format,f", scan | report, "How to print the sums")
            .defaultValue(Format::table);
    varo::DefaultedOption<Order> const sort =
        parser.modifier<Order>("sort", scan | report, "Largest first, or by name")
            .defaultValue(Order::bytes);
    varo::DefaultedOption<unsigned> const limit =
        parser.modifier<unsigned>("limit,n", scan | report, "Rows to print, 0 for all")
            .defaultValue(10);
    varo::Option<std::string> const topic =
        parser.modifier<std::string>("topic", help, "Actions or modifiers to explain");
    varo::Option<void> const words =
        parser.modifier<void>("words", help, "Explain this command line, word by word");

    // An option without an action goes with all of them.
    varo::Option<bool> const verbose =
        parser.option<bool>("verbose,v", "Show what the parser saw, on standard error");

    // What is in this section shows in the hidden help only, here that of --expert.
    varo::DefaultedOption<bool> const followLinks =
        parser
            .modifier<bool>("follow-links", scan, "Enter linked directories too",
                            "varo_hidden:These may change without notice.")
            .defaultValue(false);
};

// What a shell offers for values that no declaration lists.
class Files final : public varo::ValueSource {
public:
    void offer(char const* name, char const* /*typed*/, varo::ValueOffers& offers) override {
        if (name == std::string_view("save")) {
            offers.files();
        }
    }
};

int wrongCommandLine(std::string const& text) {
    std::fprintf(stderr, "dirstat: %s\nTry 'dirstat --help'.\n", varo::printable(text).c_str());
    return 2;
}

// What the manual page says besides the declarations.
varo::Manual manual() {
    varo::Manual about;
    about.name = "dirstat";
    about.summary = "sum up the files of directories";
    about.date = "2026-11-21";
    about.version = "1.0";
    about.description =
        "Counts files and their bytes by extension or directory. A scan can be "
        "kept in a file and reported again later.";
    about.exitStatus =
        "0 after success, 1 when something could not be read or written, 2 when the "
        "command line is wrong.";
    about.examples = "Which kinds of files are there?\n  dirstat --scan . --limit=5";
    about.seeAlso = "du(1), find(1)";
    return about;
}

int showHelp(Options const& options, varo::Result const& result) {
    varo::Parser const& parser = options.parser;
    std::vector<std::string> topics = result.all(options.topic);
    for (varo::Action<void> const& action : {options.scan, options.report}) {
        if (result[action]) {
            topics.push_back(action.name());
        }
    }
    varo::HelpLayout layout;
    layout.program = "dirstat";
    if (topics.empty()) {
        varo::printHelp(parser, layout);
        std::puts("\n'dirstat --help --topic=NAME' explains one of them.");
    }
    for (std::string const& topic : topics) {
        char const* const name = topic.c_str();
        if (!parser->isOptionDeclared(name, true, nullptr) &&
            !parser->isOptionDeclared(name, false, nullptr)) {
            return wrongCommandLine("There is no topic '" + topic + "'.");
        }
        layout.topic = name;
        layout.hidden = parser->isOptionDeclared(name, false, "varo_hidden") ? 1 : 0;
        varo::printHelp(parser, layout);
    }
    return 0;
}

}  // namespace

std::optional<int> readCommandLine(int argc, char const* const* argv, Request& request) {
    Notes notes;  // A handler must outlive its parser.
    varo::Parser parser(varo::kUnknownIsError | varo::kDashGuard | varo::kDoubleDashHelp);
    if (!parser) {
        std::fputs("dirstat: Out of memory.\n", stderr);
        return 1;
    }
    Options const options(parser);

    // Answers a shell that completes a command line, the build, which wants the manual, and
    // varo-clidiff; writes the help; and ends the program on a wrong command line, with what may
    // have been meant.
    parser->addHandler(&notes);
    Files files;
    auto const help = [&](varo::Result const& result) {
        if (varo::isAskedFor(parser.interface(), argc, argv, "words")) {
            std::fputs(varo::explanation(parser.interface(), argc, argv), stdout);
            return 0;
        }
        return showHelp(options, result);
    };
    varo::Result const result = varo::parseOrExit(parser, manual(), argc, argv, help, &files);

    // To the library an empty argument is an option without a value; here it is a script's slip.
    for (int index = 1; index < argc; ++index) {
        if (argv[index][0] == '\0') {
            return wrongCommandLine("Argument " + std::to_string(index) + " is empty.");
        }
    }
    if (result[options.verbose]) {
        char const* const again =
            varo::toOptionFile(parser.interface(), result.interface(), varo::kShellWords);
        std::fputs(notes.text().c_str(), stderr);
        std::fprintf(stderr, "again: dirstat %s\n", varo::printable(again).c_str());
    }
    if (result[options.expert]) {
        std::fputs(parser.help(varo::Sections::kHidden), stdout);
        return 0;
    }
    request.isReport = result[options.report];
    if (!request.isReport && !result[options.scan]) {
        return wrongCommandLine("Nothing to do.");
    }

    // All values of an option, in their order; and the arguments after "--", which may have dashes.
    request.paths = result.all(options.path);
    for (char const* argument : result.arguments()) {
        request.paths.push_back(argument);
    }
    if (request.isReport && request.paths.size() != 1) {
        return wrongCommandLine("Action '-report' takes one saved scan.");
    }
    if (request.paths.empty()) {
        request.paths.push_back(".");
    }
    // What was said last, if at all, or the default.
    request.patterns = result.all(options.match);
    request.depth = result[options.depth];
    request.save = result[options.save];
    request.by = result[options.by];
    request.format = result[options.format];
    request.sort = result[options.sort];
    request.limit = result[options.limit];
    request.followLinks = result[options.followLinks];
    return std::nullopt;
}
