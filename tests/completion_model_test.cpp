#include <algorithm>
#include <random>

#include "assist/offers.h"
#include "assist/shell_words.h"
#include "parser/basic_parser.h"
#include "support.h"

using namespace mosaic2;
using namespace varo_test;

namespace {

constexpr char const* kSections[] = {"", "varo_hidden"};

/// A declaration as it was made; the model knows no more of the parser.
struct Declared {
    std::vector<std::string> names;
    std::vector<std::string> values;  // that are allowed
    das_variant_type_t type;
    bool isAction, isHidden, isPositional;
};

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    int upTo(int last) { return static_cast<int>(m_engine() % static_cast<unsigned>(last + 1)); }
    bool oneIn(int count) { return upTo(count - 1) == 0; }
    template <class Choices>
    auto const& pick(Choices const& choices) {
        return choices[static_cast<std::size_t>(upTo(static_cast<int>(std::size(choices)) - 1))];
    }

private:
    std::mt19937 m_engine;
};

/// A random parser, random lines for it, and what a parse says of them.
class Model {
public:
    explicit Model(unsigned seed)
        : m_random(seed),
          m_flags(varo::kUnknownIsError | m_random.upTo(1) * varo::kDashGuard |
                  m_random.upTo(1) * varo::kDoubleDashHelp |
                  m_random.oneIn(3) * varo::kPositionalAfterMarker |
                  m_random.oneIn(6) * varo::kTakeTheRest | m_random.upTo(1) * varo::kKeepCommas) {
        varo::createParser(&m_parser, m_flags);
        m_shown = "flags " + std::to_string(m_flags) + "; ";
        int const count = 1 + m_random.upTo(7);
        for (int at = 0; at < count; ++at) {
            declare();
        }
        std::set<std::string> const group{m_random.pick(kNames), m_random.pick(kNames)};
        m_parser->allowSimultaneousActions(group);
        m_shown += *group.begin() + " with " + *group.rbegin() + ": ";
        m_parser->addHandler(&m_handler);
    }
    ~Model() { m_parser->destroy(); }
    Model(Model const&) = delete;

    void checkLine() {
        Arguments before, after;
        for (int left = m_random.upTo(3); left > 0; --left) {
            (m_random.oneIn(4) ? after : before).push_back(randomWord());
        }
        if (m_random.oneIn(8)) {
            before.emplace_back("--");
        }
        std::string const typed = randomTyped();
        SCOPED_TRACE(m_shown + show(before, typed, after));
        bool const isWrong = lacksItsValue(before) ? !parses(before, "", false, after)
                                                   : eventsOf(join(before, {}, after)) == kWrong;
        if (isWrong) {
            return;
        }
        varo_3_3::internal::ShellLine line;
        line.before = pointersTo(before);
        line.typed = typed;
        line.after = pointersTo(after);
        varo_3_3::Garbage texts;
        auto const offers = varo_3_3::internal::listOffers(*varo_3_3::basicParserOf(m_parser), line,
                                                           nullptr, texts);
        std::set<std::string> offered;
        for (auto const& offer : offers.words) {
            std::string const word(offer.word);
            EXPECT_TRUE(offered.insert(word).second) << word << " twice";
            EXPECT_TRUE(parses(before, word, offer.isFinished, after)) << word << " is offered";
            ++m_offers;
        }
        for (Declared const& declared : m_declared) {
            checkNames(declared, before, typed, after, offered);
            checkValues(declared, before, typed, after, offered);
        }
    }

    int m_offers = 0;
    int m_admitted = 0;

private:
    static constexpr char const* kNames[] = {"a",   "b",  "ab",    "abc",   "no-a",
                                             "bar", "no", "alpha", "alpine"};
    static constexpr char const* kSynonyms[] = {"c", "n", "abd", "no-b", "alp", "al"};
    static constexpr char const* kValues[] = {"x", "xy", "1", "a,x", "-x", "2"};
    static constexpr char const* kWrong = "wrong";

    static std::vector<char const*> pointersTo(Arguments const& words) {
        std::vector<char const*> pointers;
        for (std::string const& word : words) {
            pointers.push_back(word.c_str());
        }
        return pointers;
    }

    static std::string show(Arguments const& before, std::string const& typed,
                            Arguments const& after) {
        std::string line;
        for (std::string const& word : before) {
            line += word + " ";
        }
        line += typed + "^";
        for (std::string const& word : after) {
            line += " " + word;
        }
        return line;
    }

    void declare() {
        Declared made;
        made.names = {m_random.pick(kNames)};
        if (m_random.oneIn(3) && m_declared.size() < std::size(kSynonyms)) {
            // Never shared, or an occurrence would be stored for the other declaration.
            made.names.emplace_back(kSynonyms[m_declared.size()]);
        }
        constexpr das_variant_type_t kTypes[] = {vtNull, vtBool, vtString, vtString, vtS32};
        made.type = m_random.pick(kTypes);
        made.isAction = m_random.oneIn(3);
        made.isHidden = m_random.oneIn(6);
        std::string const list =
            made.names.size() == 1 ? made.names[0] : made.names[0] + "," + made.names[1];
        char const* const section = kSections[made.isHidden];
        char const* const owner = m_random.pick(kNames);
        bool const isModifier = m_random.upTo(2) != 0;
        m_shown += (made.isAction ? "action "
                    : isModifier  ? std::string(owner) + "'s "
                                  : "option ") +
                   list + " of type " + std::to_string(made.type) +
                   (made.isHidden ? " hidden" : "");
        varo::IOption* option =
            made.isAction ? m_parser->action(list.c_str(), "", made.type, section)
            : isModifier  ? m_parser->modifier(list.c_str(), owner, "", made.type, section)
                          : m_parser->option(list.c_str(), "", made.type, section);
        auto& registry = varo_3_3::basicParserOf(m_parser)->registry();
        if (registry.isPlaceholder(option)) {
            m_shown += " refused; ";
            return;
        }
        made.isPositional = !made.isAction && m_random.oneIn(4);
        if (made.isPositional) {
            option->positional();
            m_shown += " positional";
        }
        for (int left = m_random.upTo(3); left > 0 && m_random.oneIn(2); --left) {
            std::string const value = m_random.pick(kValues);
            option->allowValue(value.c_str());
            made.values.push_back(value);
            m_shown += " " + value;
        }
        if (m_random.oneIn(5)) {
            char const* const value = m_random.pick(kValues);
            option->allowDeprecatedValue(value, m_random.pick(kValues));
            m_shown += std::string(" not ") + value;
        }
        if (m_random.oneIn(6) && made.type == vtBool) {
            option->defaultValue(true);
        }
        m_shown += "; ";
        m_declared.push_back(made);
    }

    std::string randomName() {
        return m_declared.empty() ? "a" : m_random.pick(m_random.pick(m_declared).names);
    }

    std::string randomWord() {
        std::string dashed = "--" + randomName();
        switch (m_random.upTo(4)) {
            case 0:
                return m_random.pick(kValues);
            case 1:
                return dashed + "=" + m_random.pick(kValues);
            default:
                return dashed;
        }
    }

    std::string randomTyped() {
        constexpr char const* kStarts[] = {"", "", "-", "--", "--", "\xE2\x80\x93"};
        std::string typed = m_random.pick(kStarts);
        if (!typed.empty() && m_random.upTo(1) != 0) {
            typed +=
                randomName().substr(0, std::size_t{1} + static_cast<unsigned>(m_random.upTo(2)));
            typed += m_random.oneIn(3) ? "=" : "";
        }
        return typed + (m_random.oneIn(4) ? std::string(m_random.pick(kValues)).substr(0, 1) : "");
    }

    static Arguments join(Arguments line, Arguments const& middle, Arguments const& after) {
        line.insert(line.end(), middle.begin(), middle.end());
        line.insert(line.end(), after.begin(), after.end());
        return line;
    }

    /// What a parse tells of a line, to which an action may be added in front while it has none, or
    /// kWrong.
    std::string eventsOf(Arguments const& line) {
        std::string events = eventsOfWhole(line);
        if (events != kWrong || m_error != "No action defined.") {
            return events;
        }
        for (Declared const& declared : m_declared) {
            for (char const* value : {"", "=1", "=0", "=x", "=xy", "=2", "=a,x", "=-x"}) {
                std::string const action = "--" + declared.names[0] + value;
                bool const isSwitch = declared.type == vtNull || declared.type == vtBool;
                if (!declared.isAction || isSwitch != (*value == '\0')) {
                    continue;
                }
                std::size_t const ownSize = eventsOfWhole({action}).size();
                std::string const more = eventsOfWhole(join({action}, line, {}));
                if (more != kWrong) {
                    return more.substr(ownSize);
                }
            }
        }
        return kWrong;
    }

    std::string eventsOfWhole(Arguments const& line) {
        std::vector<char const*> argv{"tool"};
        if (line.empty()) {
            argv.push_back("--");  // otherwise the defaults are not checked
        }
        for (std::string const& argument : line) {
            argv.push_back(argument.c_str());
        }
        m_handler.m_events.clear();
        m_warning.clear();
        int const code =
            m_parser->parseArgsVector(static_cast<int>(argv.size()), argv.data(), nullptr);
        m_error = m_parser->getErrorDesc();
        m_warning = code == varo::kSuccess ? m_error : "";
        return code == varo::kSuccess ? m_handler.m_events : kWrong;
    }

    bool lacksItsValue(Arguments const& before) {
        eventsOfWhole(before);
        return m_error.find("' requires a value in argument: '") != std::string::npos;
    }

    bool parses(Arguments const& before, std::string const& word, bool isFinished,
                Arguments const& after) {
        for (char const* value : {"", "1", "0", "x", "xy", "2", "a,x", "-x"}) {
            if (isFinished == (*value == '\0') &&
                eventsOf(join(before, {word + value}, after)) != kWrong) {
                return true;
            }
        }
        return false;
    }

    /// How often an event is among the events of a line.
    int count(std::string const& events, std::string const& event) {
        int found = 0;
        for (std::size_t at = 0; (at = events.find(event, at)) != std::string::npos; ++at) {
            ++found;
        }
        return found;
    }

    /// Whether a parse may take one of its names for a declaration that is not to be offered.
    bool sharesUnshownName(Declared const& declared) {
        return std::any_of(m_declared.begin(), m_declared.end(), [&](Declared const& other) {
            return (other.isHidden || other.isPositional || other.type != declared.type) &&
                   std::find_first_of(other.names.begin(), other.names.end(),
                                      declared.names.begin(),
                                      declared.names.end()) != other.names.end();
        });
    }

    /// Each name that may be offered must be, if the line parses with it.
    void checkNames(Declared const& declared, Arguments const& before, std::string const& typed,
                    Arguments const& after, std::set<std::string> const& offered) {
        bool const isSwitch = declared.type == vtNull || declared.type == vtBool;
        std::string const event = "option " + declared.names[0] + "; ";
        std::string const without = eventsOf(join(before, {}, after));
        if (declared.isHidden || sharesUnshownName(declared) || without == kWrong ||
            (isSwitch && count(without, event) != 0)) {
            return;
        }
        std::size_t const dashes = typed.rfind("--", 0) == 0     ? 2
                                   : typed.rfind('-', 0) == 0    ? 1
                                   : typed.rfind('\xE2', 0) == 0 ? 3
                                                                 : 0;
        std::string const typedName = typed.substr(dashes);
        for (std::size_t at = 0; at < declared.names.size(); ++at) {
            for (std::string const prefix : {"", "no-"}) {
                std::string const name = prefix + declared.names[at];
                bool const isShort = declared.names[at].size() == 1 && at != 0;
                if ((!prefix.empty() && (declared.type != vtBool || isShort)) ||
                    (isShort && typedName.empty()) || name.rfind(typedName, 0) != 0 ||
                    (dashes == 0 && !typed.empty())) {
                    continue;
                }
                bool const isDouble =
                    ((m_flags & varo::kDoubleDashHelp) != 0 || dashes == 3) && name.size() > 1;
                std::string const word =
                    (dashes == 2 || isDouble ? "--" : "-") + name + (isSwitch ? "" : "=");
                for (char const* value : {"", "1", "0", "x", "xy", "2", "a,x", "-x"}) {
                    std::string const with = isSwitch == (*value == '\0')
                                                 ? eventsOf(join(before, {word + value}, after))
                                                 : kWrong;
                    // The positional option may have taken it instead, or another declaration.
                    bool const isIt = with != kWrong && count(with, event) > count(without, event);
                    m_admitted += isIt;
                    EXPECT_TRUE(!isIt || offered.count(word) != 0) << word << " is not offered";
                }
            }
        }
    }

    /// The same for each allowed value.
    void checkValues(Declared const& declared, Arguments const& before, std::string const& typed,
                     Arguments const& after, std::set<std::string> const& offered) {
        bool const isOnlyOne =
            std::count_if(m_declared.begin(), m_declared.end(), [&](Declared const& other) {
                return other.names[0] == declared.names[0];
            }) == 1;
        if (!isOnlyOne) {
            return;  // events do not tell whose value it is
        }
        std::size_t const sign = typed.find('=');
        bool const lacksValue = lacksItsValue(before);
        std::string const head =
            lacksValue || sign == std::string::npos ? "" : typed.substr(0, sign + 1);
        Arguments const finished(before.begin(), before.end() - (lacksValue ? 1 : 0));
        std::string const without = eventsOf(join(finished, {}, after));
        for (std::string const& value : declared.values) {
            std::string const word = head + value;
            if (declared.isHidden || word.rfind(typed, 0) != 0) {
                continue;
            }
            std::string const event = "value " + declared.names[0] + "=" + value + "; ";
            std::string const with = eventsOf(join(before, {word}, after));
            bool const isOwn =
                m_warning.empty() && with != kWrong && count(with, event) > count(without, event);
            m_admitted += isOwn;
            EXPECT_TRUE(!isOwn || offered.count(word) != 0) << word << " is not offered";
        }
    }

    Random m_random;
    int m_flags;
    varo::IParser* m_parser = nullptr;
    RecordingHandler m_handler;
    std::vector<Declared> m_declared;
    std::string m_shown;  // the declarations
    std::string m_error;
    std::string m_warning;
};

}  // namespace

TEST(Completion, OffersWhatParsesAndNothingElse) {
    int offers = 0;
    int admitted = 0;
    for (unsigned seed = 0; seed < 2000 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Model model(seed);
        for (int line = 0; line < 8; ++line) {
            model.checkLine();
        }
        offers += model.m_offers;
        admitted += model.m_admitted;
    }
    EXPECT_GT(offers, 5000);
    EXPECT_GT(admitted, 5000);
}
