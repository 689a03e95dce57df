// How dirstat uses the library, from top to bottom: listen, declare, help, parse, query.
// What the tool does with the answers is in dirstat.cpp.

#include <varo/varo.h>
#include <cstdio>

#include "dirstat.h"

using mosaic2::vtBool;
using mosaic2::vtNull;
using mosaic2::vtString;
using mosaic2::vtU32;

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
        m_text += event + escaped(subject) + "\n";
        return true;
    }

    std::string m_text;
};

void declare(varo::IParser* parser) {
    // Actions say what the tool does: a command line has one of them. These take no value (vtNull).
    parser->action("scan", "Sum up the files of directories, by default of this one", vtNull, "");
    parser->action("report", "Sum up the files of one saved scan", vtNull, "");
    parser->action("help,h", "Explain dirstat or a topic", vtNull, "");
    parser->action("expert", "List the options for experts", vtNull, "");
    // ... one, but for --scan --help, which asks what --scan can do.
    parser->allowSimultaneousActions({"help", "scan"});
    parser->allowSimultaneousActions({"help", "report"});

    // Modifiers go with the actions that are listed behind their names, and with no others. The
    // positional one takes every argument without a dash. Values are split at ',' unless tokenize()
    // says otherwise, which paths need.
    parser->modifier("path", "scan,report", "", vtString, "")->positional()->tokenize(0);
    parser->modifier("depth", "scan", "Levels of subdirectories to enter; else all", vtU32, "");
    parser->modifier("match,m", "scan", "Name patterns of the files to count, such as '*.h,*.cpp'",
                     vtString, "");
    parser->modifier("save", "scan", "Keep the scan in this file, for --report", vtString, "")
        ->tokenize(0);

    // A value is one of those allowed, or the beginning of just one of them. A deprecated one is
    // replaced, with a warning. A default is the answer until the option is given.
    parser->modifier("by", "scan,report", "What to sum up by", vtString, "")
        ->allowValue("extension")
        ->allowValue("directory")
        ->allowDeprecatedValue("folder", "directory")
        ->defaultValue("extension");
    parser->modifier("format,f", "scan,report", "How to print the sums", vtString, "")
        ->allowValue("table")
        ->allowValue("csv")
        ->allowValue("json")
        ->defaultValue("table");
    parser->modifier("sort", "scan,report", "Largest first, or by name", vtString, "")
        ->allowValue("bytes")
        ->allowValue("files")
        ->allowValue("name")
        ->defaultValue("bytes");
    parser->modifier("limit,n", "scan,report", "Rows to print, 0 for all", vtU32, "")
        ->defaultValue(10U);
    parser->modifier("topic", "help", "Actions or modifiers to explain", vtString, "");

    // An option without an action goes with all of them.
    parser->option("verbose,v", "Show what the parser saw, on standard error", vtBool, "");
    parser->addOptionFileOption("Take further arguments from this file, one a line", "");

    // What is in this section shows in the hidden help only, here that of --expert.
    char const* const hidden = "varo_hidden:These may change without notice.";
    parser->modifier("follow-links", "scan", "Enter linked directories too", vtBool, hidden)
        ->defaultValue(false);
}

int wrongCommandLine(std::string const& text) {
    std::fprintf(stderr, "dirstat: %s\nTry 'dirstat --help'.\n", escaped(text).c_str());
    return 2;
}

int showHelp(varo::IParser* parser, varo::Result const& result) {
    std::vector<std::string> topics;
    for (varo::Value const& value : result.values("topic")) {
        topics.push_back(value.text());
    }
    for (char const* action : {"scan", "report"}) {
        if (result.has(action)) {
            topics.push_back(action);
        }
    }
    if (topics.empty()) {
        std::printf(
            "Usage: dirstat --ACTION [PATH ...] [--MODIFIER=VALUE ...]\n\nActions:\n%s\n"
            "With every action:\n%s'dirstat --help --topic=NAME' explains more.\n",
            parser->getDescription(false), parser->getGlobalModifiersDescription(false));
    }
    for (std::string const& topic : topics) {
        bool const isAction = parser->isOptionDeclared(topic.c_str(), true, nullptr);
        if (!isAction && !parser->isOptionDeclared(topic.c_str(), false, nullptr)) {
            return wrongCommandLine("There is no topic '" + topic + "'.");
        }
        bool const isHidden = parser->isOptionDeclared(topic.c_str(), false, "varo_hidden");
        std::fputs(parser->getDescription(topic.c_str(), isHidden), stdout);
        if (isAction) {
            std::fputs(parser->getActionModifiersDescription(topic.c_str(), false), stdout);
        }
    }
    return 0;
}

}  // namespace

std::optional<int> readCommandLine(int argc, char const* const* argv, Request& request) {
    // To the library an empty argument is an option without a value; here it is a script's slip.
    for (int index = 1; index < argc; ++index) {
        if (argv[index][0] == '\0') {
            return wrongCommandLine("Argument " + std::to_string(index) + " is empty.");
        }
    }

    Notes notes;  // A handler must outlive its parser.
    varo::Parser parser(varo::kUnknownIsError | varo::kDashGuard | varo::kDoubleDashHelp);
    varo::Result result = parser.createResult();
    if (!parser || !result) {
        std::fputs("dirstat: Out of memory.\n", stderr);
        return 1;
    }
    declare(parser.interface());
    parser->addHandler(&notes);
    int const code = parser.parse(argc, argv, result);

    // After a failure the result still holds what came before it.
    if (result.last<bool>("verbose").value_or(false)) {
        std::fputs(notes.text().c_str(), stderr);
    }
    if (code != varo::kSuccess) {
        return wrongCommandLine(parser.error());
    }
    if (*parser.error() != '\0') {  // After success, warnings: of deprecated values.
        std::fprintf(stderr, "%s\n", parser.error());
    }

    if (result.has("help")) {
        return showHelp(parser.interface(), result);
    }
    if (result.has("expert")) {
        std::fputs(parser->getDescription(true), stdout);
        return 0;
    }
    request.isReport = result.has("report");
    if (!request.isReport && !result.has("scan")) {
        return wrongCommandLine("Nothing to do.");
    }

    // All values of an option, in their order; and the arguments behind "--", which may have
    // dashes.
    for (varo::Value const& value : result.values("path")) {
        request.paths.push_back(value.text());
    }
    for (char const* argument : result.arguments()) {
        request.paths.push_back(argument);
    }
    for (varo::Value const& value : result.values("match")) {
        request.patterns.push_back(value.text());
    }
    if (request.isReport && request.paths.size() != 1) {
        return wrongCommandLine("Action '-report' takes one saved scan.");
    }
    if (request.paths.empty()) {
        request.paths.push_back(".");
    }
    // What was said last, if at all, or the default.
    request.depth = result.last<unsigned>("depth");
    request.save = result.last<std::string>("save");
    request.by = result.last<std::string>("by").value_or("");
    request.format = result.last<std::string>("format").value_or("");
    request.sort = result.last<std::string>("sort").value_or("");
    request.limit = result.last<unsigned>("limit").value_or(0);
    request.followLinks = result.last<bool>("follow-links").value_or(false);
    return std::nullopt;
}
