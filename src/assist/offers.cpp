#include "assist/offers.h"

#include <algorithm>
#include <initializer_list>
#include <set>

#include "assist/walk.h"
#include "help/option_help.h"
#include "options/value_text.h"
#include "parser/option_files.h"
#include "platform/join.h"
#include "recognizers/dashes.h"
#include "varo/completion.h"

namespace varo_3_3::internal {
namespace {

/// Whether an option has values, rather than being there or not.
bool takesValue(OptionDescription const& option) {
    return option.m_type != mosaic2::vtNull && option.m_type != mosaic2::vtBool;
}

bool isHidden(OptionDescription const& option) {
    return !HelpStyle{0, false}.shows(option.m_section);
}

bool isNamed(OptionDescription const& option, std::string_view name) {
    for (std::string_view const own : option.m_names) {
        if (own == name) {
            return true;
        }
    }
    return false;
}

std::string textOf(mosaic2::variant_t const& value) {
    std::string text;
    appendText(text, value);
    return text;
}

/// What may stand where a word of the command line stands.
enum class Place {
    kAnything,
    kOptionValue,  ///< the value of the option in the word before
    kPositional    ///< a value of the positional option, whatever it begins with
};

/// Puts a word before the recognizers, as the parse would, and keeps what they make of it.
class Trial final : public IResultCollector {
public:
    explicit Trial(BasicParser& parser)
        : m_registry(parser.registry()), m_flags(parser.flags() & ~kTakeTheRest) {}

    /// Whether `word` is taken whole at `place`; for an option's value, after `optionWord`.
    bool takes(Place place, char const* optionWord, std::string const& word) {
        char const* const words[] = {optionWord, word.c_str()};
        bool const isValue = place == Place::kOptionValue;
        ArgumentVector source(words + (isValue ? 0 : 1), isValue ? 2 : 1);
        ArgumentList args(source);
        // Made anew, since they remember an argument by where it stands.
        Recognizers recognizers(nullptr, nullptr, m_flags, m_whiteSpace, {m_position, kIsTraced});
        unsigned long index = ~0UL;
        m_text.clear();
        IArgumentParser* const recognizer = place == Place::kPositional
                                                ? &recognizers.positional
                                                : recognizers.choose(args, m_registry, m_warning);
        m_warning.clear();
        bool const isTaken =
            recognizer != nullptr &&
            recognizer->parse(args, this, m_registry, index, m_warning) == kTaken && args.empty();
        m_isPositional = recognizer == &recognizers.positional;
        m_option =
            index < m_registry.records().size() ? m_registry.records()[index].get() : nullptr;
        return isTaken;
    }

    /// Whether `dashedName` is taken as `option`, with some value if it has values.
    bool takesName(OptionDescription const& option, std::string const& dashedName) {
        auto const takes = [&](std::string const& value) {
            return this->takes(Place::kAnything, nullptr, dashedName + value) &&
                   m_option == &option && !m_isPositional;
        };
        if (!takesValue(option)) {
            return takes("");
        }
        if (option.m_allowedValues.empty() && (takes("=1") || takes("=0"))) {
            return true;
        }
        for (mosaic2::variant_t const& value : option.m_allowedValues) {
            if (takes("=" + textOf(value))) {
                return true;
            }
        }
        for (auto const& deprecated : option.m_deprecatedValues) {
            if (takes("=" + textOf(deprecated.first))) {
                return true;
            }
        }
        return false;
    }

    void store(OptionDescription const& /*option*/, OptionData const& data) override {
        if (!data.m_values.empty()) {
            Value const& last = data.m_values.back();
            m_text = last.text();
            m_value = last.value();
        }
    }

    // Of the last word that was tried, taken or not.
    OptionDescription const* option() const { return m_option; }  ///< null if there is none
    bool isPositional() const { return m_isPositional; }

    // Of the last word that was taken: its last value.
    std::string const& text() const { return m_text; }
    mosaic2::variant_t const& value() const { return m_value; }
    bool isDeprecated() const { return !m_warning.empty(); }

    WhiteSpace& whiteSpace() { return m_whiteSpace; }

private:
    static constexpr bool kIsTraced = false;

    RegisteredOptionStorage& m_registry;
    int m_flags;
    WhiteSpace m_whiteSpace;
    int m_position = 0;
    OptionDescription const* m_option = nullptr;
    bool m_isPositional = false;
    std::string m_text;
    mosaic2::variant_t m_value;
    std::string m_warning;
};

/// What the words around the cursor leave to be added: which options and actions were given, and
/// which others fit them.
class Fitting {
public:
    /// `unfinished` is the word whose value is being typed, or null.
    Fitting(BasicParser& parser, Walk const& walk, WalkedWord const* unfinished, Trial& trial)
        : m_parser(parser), m_trial(trial), m_given(walk.result().givenOptions()) {
        m_verdict = judge(m_given);
        if (m_verdict.action == nullptr) {
            collectPossible();
        }
        bool const isAtAnEnd = m_verdict.kind == ActionVerdict::kNoAction &&
                               m_possibleTags.empty() && !walk.words().empty();
        m_isWrong = isAtAnEnd || m_verdict.kind == ActionVerdict::kActionsCollide ||
                    m_verdict.kind == ActionVerdict::kNotAccepted;
        for (WalkedWord const& word : walk.words()) {
            m_isWrong = m_isWrong || (word.isWrong && &word != unfinished);
        }
    }

    /// Whether the line is wrong whatever is added, so that nothing is asked to fit.
    bool isWrong() const { return m_isWrong; }

    bool isGiven(OptionDescription const& option) const {
        for (GivenOption const& given : m_given) {
            if (given.isStored && isNamed(option, given.name)) {
                return true;
            }
        }
        return false;
    }

    /// The declaration that an occurrence of `option` would count as; null if it does not fit.
    OptionDescription const* fit(OptionDescription const& option) {
        if (m_isWrong || isGiven(option)) {
            return &option;
        }
        std::string_view const name = option.firstName();
        std::vector<GivenOption> given = m_given;
        given.push_back({name, true});
        auto const [kind, action, other] = judge(given);
        bool const isOpen = kind == ActionVerdict::kNoAction && !m_possibleTags.empty();
        if (kind != ActionVerdict::kFits && !isOpen) {
            return nullptr;
        }
        if (!isOpen && action == nullptr) {
            return &option;
        }
        RegisteredOptionStorage const& registry = m_parser.registry();
        OptionDescription const* const own =
            registry.find(name, isOpen ? m_possibleTags : action->m_tags);
        if (own == nullptr) {
            return !isOpen || registry.find(name, {})->m_tags.empty() ? &option : nullptr;
        }
        return own->firstName() == name ? own : &option;
    }

private:
    ActionVerdict judge(std::vector<GivenOption>& given) const {
        return judgeActions(given, m_parser.registry(), m_parser.simultaneousActions());
    }

    /// The tags of all actions that could be added, while there is none.
    void collectPossible() {
        for (auto const& record : m_parser.registry().records()) {
            if (record->isAction() && canBeGiven(*record) && fit(*record) != nullptr) {
                m_possibleTags.insert(record->m_tags.begin(), record->m_tags.end());
            }
        }
    }

    bool canBeGiven(OptionDescription const& action) {
        for (std::string_view const name : action.m_names) {
            if (m_trial.takesName(action, internal::join({"--", name}))) {
                return true;
            }
        }
        return false;
    }

    BasicParser& m_parser;
    Trial& m_trial;
    std::vector<GivenOption> m_given;
    ActionVerdict m_verdict;
    std::set<std::string> m_possibleTags;
    bool m_isWrong = false;
};

/// Finds what may stand at the cursor.
class Lister final : public ValueOffers {
public:
    /// `positionalFitting` says what fits a positional value, which may take the rest along.
    Lister(BasicParser& parser, std::string_view typed, Trial& trial, Fitting& fitting,
           Fitting& positionalFitting, ValueSource* source)
        : m_parser(parser),
          m_typed(typed),
          m_trial(trial),
          m_fitting(fitting),
          m_positionalFitting(positionalFitting),
          m_source(source) {}

    /// `lacking` is the option in the word before if it lacks its value, else null.
    Offers list(Walk::Mode mode, WalkedWord const* lacking) {
        if (lacking != nullptr) {
            m_place = Place::kOptionValue;
            m_optionWord = lacking->text.data();
            offerValues(*lacking->option, 0, true);
        } else if (mode == Walk::Mode::kAnything) {
            offerAnything();
        } else if (mode == Walk::Mode::kPositional || takesAfterMarker()) {
            m_place = Place::kPositional;
            offerPositional(true);
        } else {
            m_offers.paths = Paths::kFiles;
        }
        return std::move(m_offers);
    }

    void value(char const* text, char const* description) override {
        if (text != nullptr) {
            m_isAnswered = true;
            std::string& held = m_offers.texts.emplace_front();
            held = description != nullptr ? description : "";
            offerValue(text, held, nullptr);
        }
    }
    void files() override { offerPaths(Paths::kFiles); }
    void directories() override { offerPaths(Paths::kDirectories); }

private:
    bool takesAfterMarker() const {
        return (m_parser.flags() & kPositionalAfterMarker) != 0 &&
               m_parser.registry().firstPositional() != NameIndex::kNone;
    }

    void offerAnything() {
        std::string_view name;
        std::string_view value;
        m_trial.takes(m_place, nullptr, std::string(m_typed));
        OptionDescription const* const option = m_trial.option();
        bool const isPositional = m_trial.isPositional();
        bool const isDashed = getDashLength(m_typed, 0) != 0;
        if (isDashed && splitOptionValue(m_typed, m_trial.whiteSpace(), &name, &value)) {
            if (option != nullptr && !isPositional && m_fitting.fit(*option) != nullptr) {
                offerValues(*option, static_cast<std::size_t>(value.data() - m_typed.data()), true);
            }
        } else if (isDashed || m_typed.empty()) {
            offerNames(name);
        }
        offerPositional(isPositional);
    }

    /// Offers the names that begin with `typedName`.
    void offerNames(std::string_view typedName) {
        std::size_t const dashes = m_typed.size() - typedName.size();
        for (std::string_view const group : {"actions", "options"}) {
            for (auto const& record : m_parser.registry().records()) {
                if (record->isAction() != (group == "actions")) {
                    continue;
                }
                bool isPrimary = true;
                m_recordStart = m_offers.words.size();
                for (std::string_view const name : record->m_names) {
                    m_group = group;
                    if ((isPrimary || name.size() > 1 || !typedName.empty()) &&
                        name.starts_with(typedName)) {
                        offerName(*record, dashesFor(name, dashes) + std::string(name));
                    }
                    std::string negated = "no-" + std::string(name);
                    if (record->m_type == mosaic2::vtBool && (isPrimary || name.size() > 1) &&
                        negated.starts_with(typedName)) {
                        offerName(*record, dashesFor(negated, dashes) + negated);
                    }
                    isPrimary = false;
                }
            }
        }
    }

    /// The dashes in front of a name, of which `typed` bytes were typed: as many as there are, or
    /// as the help writes them.
    std::string dashesFor(std::string_view name, std::size_t typed) const {
        bool const isOne = typed == getDashLength(m_typed, 0);
        bool const isDouble = (m_parser.flags() & kDoubleDashHelp) != 0 || typed > 2;
        return !isOne || (isDouble && name.size() > 1) ? "--" : "-";
    }

    void offerName(OptionDescription const& option, std::string word) {
        bool const isFinished = !takesValue(option);
        if (option.m_isPositional || (isFinished && m_fitting.isGiven(option))) {
            return;
        }
        OptionDescription const* const fitting = m_fitting.fit(option);
        if (fitting != nullptr && !isHidden(*fitting) && m_trial.takesName(option, word)) {
            word += isFinished ? "" : "=";
            addName(std::move(word), fitting->m_description, isFinished);
        }
    }

    /// A declaration may have a name twice.
    void addName(std::string word, std::string_view description, bool isFinished) {
        for (std::size_t at = m_recordStart; at < m_offers.words.size(); ++at) {
            if (m_offers.words[at].word == word) {
                return;
            }
        }
        add(std::move(word), description, isFinished);
    }

    void offerPositional(bool isLikely) {
        std::uint32_t const number = m_parser.registry().firstPositional();
        if (number != NameIndex::kNone) {
            OptionDescription const& option = *m_parser.registry().records()[number];
            bool const spoilsLine = m_positionalFitting.isWrong() && !m_fitting.isWrong();
            if (!spoilsLine && m_positionalFitting.fit(option) != nullptr) {
                offerValues(option, 0, isLikely);
            }
        }
    }

    /// Offers values of `option`, of which the text from `start` on was typed. Unless that is
    /// likely to be one, only values that the declaration names.
    void offerValues(OptionDescription const& option, std::size_t start, bool isLikely) {
        if (!takesValue(option) || isHidden(option)) {
            return;
        }
        m_group = "values";
        std::size_t const separator =
            option.m_tokenizer != 0 ? m_typed.rfind(option.m_tokenizer) : std::string_view::npos;
        m_pieceStart =
            separator != std::string_view::npos && separator >= start ? separator + 1 : start;
        m_isAnswered = !isLikely;
        if (m_source != nullptr && isLikely) {
            m_source->offer(option.firstName().data(),
                            std::string(m_typed.substr(m_pieceStart)).c_str(), *this);
        }
        for (mosaic2::variant_t const& allowed : option.m_allowedValues) {
            offerValue(textOf(allowed), {}, &allowed);
        }
        bool const namesFiles = m_parser.readsOptionFiles() && isNamed(option, kOptionFileName);
        bool const isPath = option.m_isPositional || namesFiles;
        if (!m_isAnswered && isPath && option.m_type == mosaic2::vtString &&
            option.m_allowedValues.empty()) {
            offerPaths(Paths::kFiles);
        }
    }

    /// Offers one value if it would be taken as such; `wanted` is what it must be taken for, or
    /// null.
    void offerValue(std::string const& text, std::string_view description,
                    mosaic2::variant_t const* wanted) {
        std::string word(m_typed.substr(0, m_pieceStart));
        word += text;
        if (word.starts_with(m_typed) && !text.empty() &&
            m_trial.takes(m_place, m_optionWord, word) && !m_trial.isDeprecated() &&
            m_trial.text() == text && (wanted == nullptr || m_trial.value() == *wanted) &&
            m_values.insert(word).second) {
            add(std::move(word), description, true);
        }
    }

    void add(std::string word, std::string_view description, bool isFinished) {
        m_offers.words.push_back({std::move(word), description, isFinished, m_group});
    }

    void offerPaths(Paths paths) {
        m_isAnswered = true;
        m_offers.paths = std::max(m_offers.paths, paths);
        m_offers.pathStart = m_pieceStart;
    }

    BasicParser& m_parser;
    std::string_view m_typed;
    Trial& m_trial;
    Fitting& m_fitting;
    Fitting& m_positionalFitting;
    ValueSource* m_source;
    Offers m_offers;

    Place m_place = Place::kAnything;
    char const* m_optionWord = nullptr;
    std::string_view m_group;
    std::size_t m_recordStart = 0;   // where the offers of the present declaration begin
    std::size_t m_pieceStart = 0;    // of the value being typed
    bool m_isAnswered = false;       // the source has said something, or is not asked
    std::set<std::string> m_values;  // that were offered
};

void walkOver(Walk& walk, std::vector<std::string> const& words) {
    std::vector<char const*> texts;
    texts.reserve(words.size());
    for (std::string const& word : words) {
        texts.push_back(word.c_str());
    }
    ArgumentVector source(texts.data(), texts.size());
    walk.take(source);
}

}  // namespace

Offers listOffers(BasicParser& parser, std::vector<std::string> const& before,
                  std::string_view typed, std::vector<std::string> const& after,
                  ValueSource* source) {
    Trial trial(parser);
    Walk walk(parser);
    walkOver(walk, before);
    Walk::Mode const mode = walk.mode();
    std::size_t const count = walk.words().size();
    bool const lacksValue = count != 0 && walk.words().back().lacksValue;
    walkOver(walk, after);
    WalkedWord const* const lacking = lacksValue ? &walk.words()[count - 1] : nullptr;
    Fitting fitting(parser, walk, lacking, trial);
    if ((parser.flags() & kTakeTheRest) == 0 || after.empty() || mode != Walk::Mode::kAnything) {
        return Lister(parser, typed, trial, fitting, fitting, source).list(mode, lacking);
    }
    Walk taken(parser);
    walkOver(taken, before);
    taken.goOn(Walk::Mode::kPositional);
    walkOver(taken, after);
    Fitting positionalFitting(parser, taken, nullptr, trial);
    return Lister(parser, typed, trial, fitting, positionalFitting, source).list(mode, lacking);
}

}  // namespace varo_3_3::internal
