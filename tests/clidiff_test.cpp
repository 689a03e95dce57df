// What varo-clidiff says of two versions of a command line.

#include <algorithm>
#include <random>

#include "compare.h"
#include "read_json.h"
#include "support.h"
#include "varo/documents.h"

using mosaic2::variant_t;
using varo_test::Arguments;
using varo_test::parse;

namespace {

/// One declaration, kept as data so that it can be changed.
struct Planned {
    enum Kind { kOption, kAction, kModifier };
    Kind kind = kOption;
    std::string names = {};
    std::string actions = {};
    mosaic2::das_variant_type_t type = mosaic2::vtString;
    std::vector<variant_t> allowed = {};
    std::vector<std::pair<variant_t, variant_t>> deprecated = {};
    std::vector<variant_t> defaults = {};  ///< none or one
    std::string synonym = {};
    bool isPositional = false;
    bool isHidden = false;
    bool isSplit = true;
};

struct Plan {
    int flags = 0;
    std::vector<std::set<std::string>> together;
    std::vector<Planned> declarations;

    varo::Parser build(int otherFlags) const {
        varo::Parser parser(static_cast<varo::CreationFlag>(otherFlags));
        for (Planned const& planned : declarations) {
            char const* const section = planned.isHidden ? "varo_hidden" : "general";
            char const* const names = planned.names.c_str();
            varo::IOption* const option =
                planned.kind == Planned::kAction ? parser->action(names, "", planned.type, section)
                : planned.kind == Planned::kModifier
                    ? parser->modifier(names, planned.actions.c_str(), "", planned.type, section)
                    : parser->option(names, "", planned.type, section);
            for (variant_t const& value : planned.allowed) {
                option->allowValue(value);
            }
            for (auto const& [value, replacement] : planned.deprecated) {
                option->allowDeprecatedValue(value, replacement);
            }
            for (variant_t const& value : planned.defaults) {
                option->defaultValue(value);
            }
            if (!planned.synonym.empty()) {
                option->synonym(planned.synonym.c_str());
            }
            planned.isPositional ? option->positional() : option;
            planned.isSplit ? option : option->tokenize(0);
        }
        for (std::set<std::string> const& group : together) {
            parser->allowSimultaneousActions(group);
        }
        return parser;
    }
    varo::Parser build() const { return build(flags); }
};

clidiff::Changes diff(varo::Parser const& older, varo::Parser const& newer) {
    return clidiff::compare(clidiff::readJson(varo::describeJson(older.interface())),
                            clidiff::readJson(varo::describeJson(newer.interface())));
}

/// Makes plans, changes to them, and lines for them.
class Chance {
public:
    explicit Chance(unsigned seed) : m_random(seed) {}

    unsigned below(unsigned limit) { return static_cast<unsigned>(m_random() % limit); }
    bool oneIn(unsigned count) { return below(count) == 0; }

    template <class Type, std::size_t size>
    Type const& of(Type const (&choices)[size]) {
        return choices[below(size)];
    }

    std::string name() {
        static char const* const kNames[] = {"a",     "ab", "abc",   "level",
                                             "lever", "le", "no-ab", "no-le",
                                             "lemon", "v",  "ver",   "version"};
        return of(kNames);
    }

    variant_t value(mosaic2::das_variant_type_t type) {
        static char const* const kTexts[] = {"json", "js", "jam", "table", "1", "x"};
        if (type == mosaic2::vtBool) {
            return variant_t(oneIn(2));
        }
        if (type == mosaic2::vtString && !oneIn(9)) {
            return variant_t(of(kTexts));
        }
        unsigned const number = below(4);
        variant_t const numbers[] = {static_cast<int>(number), number, 1ULL * number,
                                     number == 0 ? -0.0 : number};
        unsigned const ofType = type == mosaic2::vtDouble ? 3 : type == mosaic2::vtU32 ? 1 : 0;
        return oneIn(2) ? numbers[ofType] : of(numbers);
    }

    Planned declaration() {
        static constexpr mosaic2::das_variant_type_t kTypes[] = {
            mosaic2::vtBool,   mosaic2::vtS32,    mosaic2::vtU32, mosaic2::vtDouble,
            mosaic2::vtString, mosaic2::vtString, mosaic2::vtNull};
        static char const* const kActions[] = {"scan", "report", "scan,report", "help"};
        Planned planned;
        planned.type = of(kTypes);
        planned.names = name() + (oneIn(3) ? "," + name() : "");
        if (oneIn(3)) {
            planned.kind = Planned::kModifier;
            planned.actions = of(kActions);
        } else if (oneIn(12)) {
            planned.kind = Planned::kAction;
            planned.type = mosaic2::vtNull;
        }
        while (oneIn(3)) {
            planned.allowed.push_back(value(planned.type));
        }
        if (oneIn(5)) {
            planned.deprecated.emplace_back(value(planned.type), value(planned.type));
        }
        if (oneIn(12)) {
            planned.defaults.push_back(value(planned.type));
        }
        planned.synonym = oneIn(8) ? name() : "";
        planned.isPositional = oneIn(5);
        planned.isHidden = oneIn(8);
        planned.isSplit = !oneIn(5);
        return planned;
    }

    Plan plan() {
        Plan plan;
        plan.flags = static_cast<int>(below(32)) & 0x1E;
        if (oneIn(2)) {
            for (char const* const name : {"scan", "report", "help"}) {
                plan.declarations.push_back(
                    {.kind = Planned::kAction, .names = name, .type = mosaic2::vtNull});
            }
            plan.together.push_back({"scan", "help"});
        }
        for (unsigned count = 1 + below(4); count > 0; --count) {
            plan.declarations.push_back(declaration());
        }
        return plan;
    }

    void change(Plan& plan) {
        auto const count = static_cast<unsigned>(plan.declarations.size());
        Planned& planned = plan.declarations[below(count)];
        std::function<void()> const often[] = {
            [&] { plan.declarations.push_back(declaration()); },
            [&] { plan.declarations.push_back(declaration()); },
            [&] { plan.declarations.push_back(declaration()); },
            [&] { plan.declarations.insert(plan.declarations.begin(), declaration()); },
            [&] { plan.flags ^= 2 << below(4); },
            [&] {
                plan.together.push_back({"scan", oneIn(2) ? "report" : "help"});
            },
            [&] { planned.allowed.push_back(value(planned.type)); },
            [&] { planned.allowed.push_back(value(planned.type)); },
            [&] { planned.allowed.clear(); },
            [&] { planned.deprecated.emplace_back(value(planned.type), value(planned.type)); },
            [&] { planned.synonym = name(); },
            [&] { planned.actions = "scan,report"; },
            [&] { planned.names += "," + name(); },
            [&] { planned.isHidden = !planned.isHidden; },
            [&] { std::swap(planned, plan.declarations.back()); },
        };
        std::function<void()> const rarely[] = {
            [&] { planned.isPositional = !planned.isPositional; },
            [&] { planned.isSplit = !planned.isSplit; },
            [&] { planned.defaults = {value(planned.type)}; },
            [&] { planned.kind = Planned::kModifier, planned.actions = "scan"; },
            [&] { plan.together.clear(); },
            [&] { std::swap(plan.declarations.front(), planned); },
        };
        oneIn(16) ? of(rarely)() : of(often)();
    }

    Arguments line(Plan const& plan) {
        Arguments line;
        for (unsigned count = 1 + below(4); count > 0; --count) {
            line.push_back(word(plan));
        }
        return line;
    }

private:
    std::string word(Plan const& plan) {
        static char const* const kValues[] = {"0",  "1", "2",       "json", "j",
                                              "js", "x", "table,1", "true"};
        static char const* const kOthers[] = {"--", "-", "", "x", "3"};
        static char const* const kDashes[] = {"--", "--", "-", "\xE2\x80\x93"};
        if (oneIn(7)) {
            return oneIn(2) ? of(kOthers) : of(kValues);
        }
        auto const count = static_cast<unsigned>(plan.declarations.size());
        Planned const& planned = plan.declarations[below(count)];
        std::string name = planned.names.substr(0, planned.names.find(','));
        name = oneIn(6) ? this->name() : name;
        if (planned.type == mosaic2::vtBool && oneIn(3)) {
            name = "no-" + name;
        }
        name = oneIn(3) ? name.substr(0, 1 + below(4)) : name;
        bool const takesValue = planned.type != mosaic2::vtBool && planned.type != mosaic2::vtNull;
        return of(kDashes) + name + (takesValue ? "=" + std::string(of(kValues)) : "");
    }

    std::mt19937 m_random;
};

std::vector<std::string> namesOf(varo::Parser const& parser) {
    std::vector<std::string> names;
    varo::Declaration const* declaration = nullptr;
    while ((declaration = varo::nextDeclaration(parser.interface(), declaration)) != nullptr) {
        names.insert(names.end(), declaration->names, declaration->names + declaration->nameCount);
    }
    return names;
}

/// What a line gave, as far as a host that knows these names can see it.
std::string meaningOf(varo::Parser const& parser, std::vector<std::string> const& names,
                      Arguments const& line) {
    varo::Result result = parser.createResult();
    std::string meaning = "code " + std::to_string(parse(parser, result, line)) + "; ";
    for (std::string const& name : names) {
        meaning += name + ": " + varo_test::contents(result, name.c_str()) + "; ";
    }
    return meaning + varo_test::plainArguments(result);
}

/// Whether every word with a dash, up to the end marker, is one that the parser knows; `strict` is
/// that parser with flags that make the others errors.
bool knowsDashedWords(varo::Parser const& strict, Arguments const& line) {
    for (std::string word : line) {
        if (word == "--") {
            return true;
        }
        if (word.rfind("\xE2\x80\x93", 0) == 0) {
            word.replace(0, 3, "-");
        }
        varo::Result none;
        parse(strict, none, {word});
        if (word.size() > 1 && word[0] == '-' &&
            std::string_view(strict.error()).rfind("Unknown option: ", 0) == 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

TEST(CommandLineDiff, WithoutABreakNoLineChangesItsMeaning) {
    unsigned quiet = 0;
    unsigned compared = 0;
    for (unsigned seed = 0; seed < 6000; ++seed) {
        Chance chance(seed);
        Plan const plan = chance.plan();
        Plan changed = plan;
        for (unsigned count = 1 + chance.below(3); count > 0; --count) {
            chance.change(changed);
        }
        varo::Parser const older = plan.build();
        varo::Parser const newer = changed.build();
        clidiff::Changes const changes = diff(older, newer);
        if (!changes.breaks.empty()) {
            continue;
        }
        ++quiet;
        std::vector<std::string> const names = namesOf(older);
        varo::Parser const strict = plan.build(varo::kUnknownIsError | varo::kDashGuard);
        for (int count = 0; count < 60; ++count) {
            Arguments const line = chance.line(plan);
            std::string const before = meaningOf(older, names, line);
            if (before.rfind("code 0", 0) == 0 && knowsDashedWords(strict, line)) {
                ++compared;
                std::string shown;
                for (std::string const& word : line) {
                    shown += "[" + word + "] ";
                }
                ASSERT_EQ(before, meaningOf(newer, names, line))
                    << shown << "\n"
                    << varo::describeJson(older.interface())
                    << varo::describeJson(newer.interface());
            }
        }
    }
    EXPECT_GT(quiet, 1000U);
    EXPECT_GT(compared, 5000U);
}

TEST(CommandLineDiff, NamesEachBreakAndEachAddition) {
    using namespace mosaic2;
    Plan old;
    for (char const* const name : {"scan", "report"}) {
        old.declarations.push_back({.kind = Planned::kAction, .names = name, .type = vtNull});
    }
    old.declarations.push_back({.kind = Planned::kModifier,
                                .names = "format,f",
                                .actions = "scan",
                                .allowed = {"table", "json"}});
    old.declarations.push_back({.names = "verbose", .type = vtBool});
    old.together.push_back({"scan", "report"});

    struct Case {
        std::function<void(Plan& plan, Planned& format, Planned& verbose)> change;
        std::string breaks;
        std::string additions;
    };
    auto const add = [](Planned const& planned) {
        return [planned](Plan& plan, Planned&, Planned&) { plan.declarations.push_back(planned); };
    };
    Case const cases[] = {
        {[](Plan&, Planned&, Planned&) {}, "", ""},
        // names
        {add({.names = "version", .type = vtNull}),
         "--verbose: '--v' to '--ver' became ambiguous: --verbose, --version|", "--version|"},
        {add({.names = "no-verb", .type = vtNull}),
         "--verbose: '--n' to '--no-ver' became ambiguous: --no-verb, --no-verbose|"
         "--verbose: '--no-verb' now means --no-verb|",
         "--no-verb|"},
        {add({.names = "jobs", .type = vtS32}), "", "--jobs|"},
        {[](Plan&, Planned& it, Planned&) { it.names = "format"; }, "--format: name 'f' removed|",
         ""},
        {[](Plan& plan, Planned&, Planned&) { plan.declarations.pop_back(); },
         "--verbose: removed|", ""},
        // values
        {[](Plan&, Planned& it, Planned&) { it.allowed.push_back("jam"); },
         "--format: value 'j', short for 'json', is refused|", "--format: value 'jam'|"},
        {[](Plan&, Planned& it, Planned&) { it.allowed = {"json"}; },
         "--format: value 'table' is refused|", ""},
        {[](Plan&, Planned& it, Planned&) {
             it.deprecated = {{"text", "table"}};
         },
         "", ""},
        {[](Plan&, Planned& it, Planned&) {
             it.deprecated = {{"table", "json"}};
         },
         "--format: value 'table' now means 'json'|", ""},
        {[](Plan&, Planned& it, Planned&) { it.defaults = {"json"}; },
         "--format: default changed from none to 'json'|", ""},
        {[](Plan&, Planned&, Planned& it) { it.type = vtNull; },
         "--verbose: type changed from bool to none|--verbose: '--n' to '--no-verbose' is unknown|",
         ""},
        // actions
        {[](Plan& plan, Planned&, Planned&) { plan.together.clear(); },
         "no longer allowed together: --report --scan|", ""},
        {[](Plan&, Planned&, Planned& it) {
             it.kind = Planned::kModifier;
             it.actions = "scan";
         },
         "--verbose: no longer accepted by --report|", ""},
        {add({.names = "jobs", .type = vtS32, .defaults = {1}}),
         "--jobs: its default counts as given, so every line needs an action that accepts it|",
         "--jobs|"},
        // the rest
        {[](Plan&, Planned&, Planned& it) { it.isHidden = true; }, "--verbose: hidden|", ""},
        {[](Plan&, Planned& it, Planned&) { it.isSplit = false; },
         "--format: values are split at '' instead of ','|", ""},
        {[](Plan& plan, Planned&, Planned&) { plan.flags = varo::kUnknownIsError; },
         "words that were ignored are now errors|", ""},
        {[](Plan&, Planned& it, Planned&) { it.isPositional = true; },
         "words that were ignored are now values of --format|", ""},
    };
    auto const joined = [](std::vector<std::string> const& texts) {
        std::string all;
        for (std::string const& text : texts) {
            all += text + "|";
        }
        return all;
    };
    for (Case const& row : cases) {
        Plan changed = old;
        row.change(changed, changed.declarations[2], changed.declarations[3]);
        clidiff::Changes const changes = diff(old.build(), changed.build());
        EXPECT_EQ(joined(changes.breaks), row.breaks);
        EXPECT_EQ(joined(changes.additions), row.additions);
    }

    // A first action, where there was none.
    Plan plain;
    plain.declarations.push_back({.names = "verbose", .type = vtBool});
    Plan changed = plain;
    changed.declarations.push_back({.kind = Planned::kAction, .names = "scan", .type = vtNull});
    EXPECT_EQ(joined(diff(plain.build(), changed.build()).breaks),
              "there are actions now, and one of them must be given|");

    // Both zeros of a double are one value to the parser.
    plain.declarations = {{.names = "n", .type = vtDouble, .allowed = {0.0, 1.0}}};
    changed = plain;
    changed.declarations[0].deprecated = {{-0.0, 1.0}};
    EXPECT_EQ(joined(diff(plain.build(), changed.build()).breaks),
              "--n: value '-0' now means '1'|");
}

TEST(CommandLineDiff, SaysWhereAFileCannotBeUsed) {
    std::string const good = varo::describeJson(varo::Parser().interface());
    EXPECT_TRUE(clidiff::readJson(good).declarations.empty());
    auto const with = [&](std::string const& old, std::string const& text) {
        return std::string(good).replace(good.find(old), old.size(), text);
    };
    struct Case {
        std::string text;
        std::string where;  ///< the fault is where this is; "" at the end
        std::string reason;
    };
    std::string const oddKind = R"({"kind": "banana"})";
    std::string const oddBytes = R"({"kind": "action", "names": [{"name": {"bytes": "6"}}]})";
    Case const cases[] = {
        {"", "", "this is not JSON"},
        {"{\"schema\": \xFF", "\xFF", "this is not JSON"},
        {good.substr(0, good.size() / 2), "", "this is not JSON"},
        {good + "x", "x", "this is not JSON"},
        {std::string(16, '[') + "{" + std::string(1000000, '['), "{", "nested too deeply"},
        {"[]", "[]", "this should be an object"},
        {"{}", "{}", "this has no 'schema'"},
        {with("varo-command-line", "other"), "\"other", "this is no description of a command line"},
        {with("1,", "2,"), "2,", "this is version 2 of the schema; version 1 is known"},
        {with("1,", "-1,"), "-1,", "this should be a number"},
        {with("ns\": [", "ns\": [7"), "7", "this should be an object"},
        {with("ns\": [", "ns\": [" + oddKind), "\"banana",
         "this should be 'option', 'action' or 'modifier'"},
        {with("ns\": [", "ns\": [" + oddBytes), "\"6\"", "these are no bytes in hexadecimal"},
    };
    for (Case const& row : cases) {
        SCOPED_TRACE(row.text.substr(0, 300));
        try {
            clidiff::readJson(row.text);
            ADD_FAILURE() << "was read";
        } catch (clidiff::Fault const& fault) {
            EXPECT_EQ(fault.reason, row.reason);
            EXPECT_EQ(fault.offset, row.where.empty() ? row.text.size() : row.text.find(row.where));
        }
    }
}

TEST(CommandLineDiff, TheToolNamesTheFileAndTheByteInOneLine) {
    varo_test::Directory const directory;
    std::string const good = varo::describeJson(varo::Parser().interface());
    std::string const newer = std::string(good).replace(good.find("1,"), 1, "2");
    struct Case {
        char const* name;
        std::string text;  ///< "" for no file
        std::string said;
    };
    Case const cases[] = {
        {"missing", "", "byte 0: this file cannot be read"},
        {".", "", "byte 0: this file cannot be read"},
        {"broken", good.substr(0, 20), "byte 20: this is not JSON"},
        {"host\n\xC2\x9B\xE9ile", std::string(1000000, '['), "byte 16: nested too deeply"},
        {"newer", newer,
         "byte " + std::to_string(newer.find("2,")) +
             ": this is version 2 of the schema; version 1 is known"},
    };
    std::string const old = directory.write("good", good);
    for (Case const& row : cases) {
        SCOPED_TRACE(row.name);
        std::string const path =
            row.text.empty() ? directory.path(row.name) : directory.write(row.name, row.text);
        std::string command = VARO_CLIDIFF " ";
        command.append(old).append(" '").append(path).append("' 2> ");
        command.append(directory.path("said")).append(" > ").append(directory.path("out"));
        int const status = std::system(command.c_str());
        EXPECT_EQ(WEXITSTATUS(status), 2);
        for (auto const& [file, text] :
             {std::pair("said", "varo-clidiff: " + varo::printable(path) + ": " + row.said + "\n"),
              std::pair("out", std::string())}) {
            std::ifstream stream(directory.path(file));
            EXPECT_EQ(std::string((std::istreambuf_iterator<char>(stream)), {}), text);
        }
    }
    std::string const unwritten = VARO_CLIDIFF " --help > /dev/full 2> ";
    EXPECT_EQ(WEXITSTATUS(std::system((unwritten + directory.path("said")).c_str())), 2);
}
