#include "assist/offers.h"

#include <algorithm>
#include <initializer_list>
#include <set>

#include "assist/shell_words.h"
#include "assist/walk.h"
#include "help/option_help.h"
#include "options/tag_sets.h"
#include "options/value_text.h"
#include "parser/option_files.h"
#include "platform/join.h"
#include "recognizers/dashes.h"
#include "varo/completion.h"

namespace varo_3_3::internal {
namespace {

bool isHidden(OptionDescription const& option) {
    return !HelpStyle{0, false}.shows(option.m_section);
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
        : m_registry(parser.registry()),
          m_recognizers(nullptr, nullptr, parser.flags() & ~kTakeTheRest, m_whiteSpace,
                        {m_position, kIsTraced}) {}

    /// Whether `word` is taken whole at `place`; for an option's value, after `optionWord`.
    bool takes(Place place, char const* optionWord, char const* word) {
        char const* const words[] = {optionWord, word};
        bool const isValue = place == Place::kOptionValue;
        ArgumentVector source(words + (isValue ? 0 : 1), isValue ? 2 : 1);
        ArgumentList args(source);
        m_recognizers.abbreviation.forgetArgument();
        unsigned long index = ~0UL;
        m_isAsWanted = false;
        IArgumentParser* const recognizer = place == Place::kPositional
                                                ? &m_recognizers.positional
                                                : m_recognizers.choose(args, m_registry, m_warning);
        m_warning.clear();
        bool const isTaken =
            recognizer != nullptr &&
            recognizer->parse(args, this, m_registry, index, m_warning) == kTaken && args.empty();
        m_isPositional = recognizer == &m_recognizers.positional;
        m_option = index < m_registry.records().size() ? m_registry.records()[index] : nullptr;
        return isTaken;
    }

    /// Whether the last value of `word` is taken as `text`, and as `value` unless that is null,
    /// without a warning.
    bool takesValue(Place place, char const* optionWord, char const* word, std::string_view text,
                    mosaic2::variant_t const* value) {
        m_wantedText = text;
        m_wantedValue = value;
        return takes(place, optionWord, word) && m_isAsWanted && m_warning.empty();
    }

    /// Whether `dashedName` is taken as `option`, with some value if it has values.
    /// Leaves `dashedName` as it was.
    bool takesName(OptionDescription const& option, std::string& dashedName) {
        if (!option.hasValues()) {
            return takesAs(option, dashedName, "");
        }
        if (option.m_allowedValues.empty() && option.m_deprecatedValues.empty() &&
            varo_3_3::hasConversion(option.m_type)) {
            return means(option, dashedName);  // all take 0 and 1; one is no separator
        }
        if (option.m_allowedValues.empty() &&
            (takesAs(option, dashedName, "=1") || takesAs(option, dashedName, "=0"))) {
            return true;
        }
        for (mosaic2::variant_t const& value : option.m_allowedValues) {
            if (takesAs(option, dashedName, "=", &value)) {
                return true;
            }
        }
        for (auto const& deprecated : option.m_deprecatedValues) {
            if (takesAs(option, dashedName, "=", &deprecated.first)) {
                return true;
            }
        }
        return false;
    }

    void store(OptionDescription const& /*option*/, OptionData const& data) override {
        if (!data.m_values.empty()) {
            NewValue const& last = data.m_values.back();
            m_isAsWanted = last.text == m_wantedText &&
                           (m_wantedValue == nullptr || last.value == *m_wantedValue);
        }
    }

    // Of the last word that was tried, taken or not.
    OptionDescription const* option() const { return m_option; }  ///< null if there is none
    bool isPositional() const { return m_isPositional; }

    WhiteSpace& whiteSpace() { return m_whiteSpace; }

private:
    static constexpr bool kIsTraced = false;

    /// Whether a parse understands `dashedName` as `option`. A name that holds what separates names
    /// from values cannot be typed.
    bool means(OptionDescription const& option, std::string_view dashedName) {
        std::string_view name;
        std::string_view value;
        if (splitOptionValue(dashedName, m_whiteSpace, &name, &value) || name.starts_with('-')) {
            return false;
        }
        std::uint32_t const key = m_registry.names().findMeant(name);
        return key != NameIndex::kNone &&
               m_registry.records()[m_registry.names().recordOf(key)] == &option;
    }

    bool takesAs(OptionDescription const& option, std::string& dashedName, std::string_view tail,
                 mosaic2::variant_t const* value = nullptr) {
        std::size_t const size = dashedName.size();
        dashedName += tail;
        if (value != nullptr) {
            appendText(dashedName, *value);
        }
        bool const isTaken = takes(Place::kAnything, nullptr, dashedName.c_str());
        dashedName.resize(size);
        return isTaken && m_option == &option && !m_isPositional;
    }

    RegisteredOptionStorage& m_registry;
    WhiteSpace m_whiteSpace;
    int m_position = 0;
    Recognizers m_recognizers;
    OptionDescription const* m_option = nullptr;
    bool m_isPositional = false;
    std::string_view m_wantedText;
    mosaic2::variant_t const* m_wantedValue = nullptr;
    bool m_isAsWanted = false;
    std::string m_warning;
};

/// What the words around the cursor leave to be added: which options and actions were given, and
/// which others fit them.
class Fitting {
public:
    /// `unfinished` is the word whose value is being typed, or null.
    Fitting(BasicParser& parser, Walk const& walk, WalkedWord const* unfinished, Trial& trial)
        : m_parser(parser),
          m_trial(trial),
          m_given(walk.result().givenOptions()),
          m_judge(m_given, parser.registry(), parser.simultaneousActions()),
          m_verdict(m_judge.verdict()),
          m_isGiven(parser.registry().records().size(), '\0') {
        for (GivenOption const& given : m_given) {
            if (given.isStored) {
                noteGiven(given.name);
            }
        }
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

    bool isGiven(OptionDescription const& option) const { return m_isGiven[option.m_index] != 0; }

    /// The declaration that an occurrence of `option` would count as; null if it does not fit.
    OptionDescription const* fit(OptionDescription const& option) {
        RegisteredOptionStorage const& registry = m_parser.registry();
        if (m_isWrong || registry.actionCount() == 0 || isGiven(option)) {
            return &option;
        }
        std::string_view const name = option.firstName();
        auto const [kind, action, other] = m_judge.with(option);
        bool const isOpen = kind == ActionVerdict::kNoAction && !m_possibleTags.empty();
        if (kind != ActionVerdict::kFits && !isOpen) {
            return nullptr;
        }
        if (!isOpen && action == nullptr) {
            return &option;
        }
        std::set<std::string> const& tags = isOpen ? m_possibleTags : action->m_tags;
        // A search looks up each of the tags, which can be those of all actions.
        std::uint32_t const key = registry.names().findExact(name);
        bool const isNamed = key != NameIndex::kNone;  // the name may be empty
        OptionDescription const* own =
            isNamed ? registry.records()[registry.names().recordOf(key)] : registry.find(name, {});
        bool const isForAll = own->m_tags.empty();
        if (!isNamed || !registry.names().isAlone(key)) {
            own = registry.find(name, tags);
        } else if (!isIntersected(own->m_tags, tags)) {
            own = nullptr;
        }
        if (own == nullptr) {
            return !isOpen || isForAll ? &option : nullptr;
        }
        return own->firstName() == name ? own : &option;
    }

private:
    /// Everything that has this name counts as given.
    void noteGiven(std::string_view name) {
        m_parser.registry().names().anyRecordNamed(name, [&](OptionDescription const& record) {
            m_isGiven[record.m_index] = 1;
            return false;
        });
    }

    /// The tags of all actions that could be added, while there is none.
    void collectPossible() {
        for (auto const& record : m_parser.registry().records()) {
            if (record->isAction() && canBeGiven(*record) && fit(*record) != nullptr) {
                for (std::string const& tag : record->m_tags) {
                    m_possibleTags.insert(tag);
                }
            }
        }
    }

    bool canBeGiven(OptionDescription const& action) {
        for (std::string_view const name : action.m_names) {
            std::string word = join({"--", name});
            if (m_trial.takesName(action, word)) {
                return true;
            }
        }
        return false;
    }

    BasicParser& m_parser;
    Trial& m_trial;
    std::vector<GivenOption> m_given;
    Judge m_judge;
    ActionVerdict const& m_verdict;
    std::string m_isGiven;  // a byte for each declaration, 1 or 0
    std::set<std::string> m_possibleTags;
    bool m_isWrong = false;
};

/// Finds what may stand at the cursor.
class Lister final : public ValueOffers {
public:
    /// `positionalFits` says whether a positional value does, which may take the rest along.
    Lister(BasicParser& parser, std::string_view typed, Trial& trial, Fitting& fitting,
           bool positionalFits, ValueSource* source, Garbage& texts)
        : m_parser(parser),
          m_typed(typed),
          m_trial(trial),
          m_fitting(fitting),
          m_positionalFits(positionalFits),
          m_source(source),
          m_texts(texts) {}

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
            offerValue(text, description, nullptr);
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
        m_trial.takes(m_place, nullptr, m_typed.data());
        OptionDescription const* const option = m_trial.option();
        bool const isPositional = m_trial.isPositional();
        bool const isDashed = getDashLength(m_typed, 0) != 0;
        if (isDashed && splitOptionValue(m_typed, m_trial.whiteSpace(), &name, &value)) {
            if (option != nullptr && !isPositional && m_fitting.fit(*option) != nullptr) {
                offerValues(*option, static_cast<std::size_t>(value.data() - m_typed.data()), true);
            }
        } else if (isDashed || m_typed.empty()) {
            m_typedName = name;
            offerNames("actions", true);
            offerNames("options", false);
        }
        offerPositional(isPositional);
    }

    /// Offers the names of all actions, or of all others, that begin as the typed one does.
    void offerNames(char const* group, bool areActions) {
        m_group = group;
        for (auto const& record : m_parser.registry().records()) {
            if (record->isAction() != areActions) {
                continue;
            }
            m_recordStart = m_offers.words.size();
            NameList const& names = record->m_names;
            for (std::size_t at = 0; at < names.size(); ++at) {
                bool const isOffered = at == 0 || names[at].size() > 1;
                if (isOffered || !m_typedName.empty()) {
                    offerName(*record, names[at]);
                }
                if (isOffered && record->m_type == mosaic2::vtBool) {
                    offerName(*record, names.negation(at));
                }
            }
        }
    }

    void offerName(OptionDescription const& option, std::string_view name) {
        bool const isFinished = !option.hasValues();
        if (!name.starts_with(m_typedName) || option.m_isPositional ||
            (isFinished && m_fitting.isGiven(option))) {
            return;
        }
        OptionDescription const* const fitting = m_fitting.fit(option);
        if (fitting == nullptr || isHidden(*fitting)) {
            return;
        }
        m_word.assign(dashesFor(name.size()), '-');
        m_word += name;
        if (m_trial.takesName(option, m_word)) {
            if (!isFinished) {
                m_word += '=';
            }
            if (!isOffered(m_word)) {
                add(fitting->m_description, isFinished);
            }
        }
    }

    /// How many dashes stand in front of a name of `size` bytes: as many as were typed, or as the
    /// help writes.
    std::size_t dashesFor(std::size_t size) const {
        std::size_t const typed = m_typed.size() - m_typedName.size();
        bool const isOne = typed == getDashLength(m_typed, 0);
        bool const isDouble = (m_parser.flags() & kDoubleDashHelp) != 0 || typed > 2;
        return !isOne || (isDouble && size > 1) ? 2 : 1;
    }

    /// Whether the present declaration, which may have a name twice, has offered this one.
    bool isOffered(std::string_view word) const {
        for (std::size_t at = m_recordStart; at < m_offers.words.size(); ++at) {
            if (m_offers.words[at].word == word) {
                return true;
            }
        }
        return false;
    }

    void offerPositional(bool isLikely) {
        if (m_positionalFits) {
            RegisteredOptionStorage const& registry = m_parser.registry();
            offerValues(*registry.records()[registry.firstPositional()], 0, isLikely);
        }
    }

    /// Offers values of `option`, of which the text from `start` on was typed. Unless that is
    /// likely to be one, only values that the declaration names.
    void offerValues(OptionDescription const& option, std::size_t start, bool isLikely) {
        if (!option.hasValues() || isHidden(option)) {
            return;
        }
        m_group = "values";
        std::size_t const separator =
            option.m_tokenizer != 0 ? m_typed.rfind(option.m_tokenizer) : std::string_view::npos;
        m_pieceStart =
            separator != std::string_view::npos && separator >= start ? separator + 1 : start;
        m_isAnswered = !isLikely;
        if (m_source != nullptr && isLikely) {
            m_source->offer(option.firstName().data(), m_typed.data() + m_pieceStart, *this);
        }
        std::string text;
        for (mosaic2::variant_t const& allowed : option.m_allowedValues) {
            text.clear();
            appendText(text, allowed);
            offerValue(text, nullptr, &allowed);
        }
        bool const namesFiles = m_parser.readsOptionFiles() && OptionFiles::namesFiles(option);
        bool const isPath = option.m_isPositional || namesFiles;
        if (!m_isAnswered && isPath && option.m_type == mosaic2::vtString &&
            option.m_allowedValues.empty()) {
            offerPaths(Paths::kFiles);
        }
    }

    /// Offers one value if it would be taken as such. `wanted` is what it must be taken for, or
    /// null, as `description` may be.
    void offerValue(std::string_view text, char const* description,
                    mosaic2::variant_t const* wanted) {
        if (text.empty() || !text.starts_with(m_typed.substr(m_pieceStart))) {
            return;
        }
        m_word = m_typed.substr(0, m_pieceStart);
        m_word += text;
        if (m_trial.takesValue(m_place, m_optionWord, m_word.c_str(), text, wanted) &&
            m_values.insert(std::string(m_word)).second) {
            add(description != nullptr ? m_texts.keep(description) : "", true);
        }
    }

    /// Offers m_word.
    void add(std::string_view description, bool isFinished) {
        std::string_view const word(m_texts.keep(m_word), m_word.size());
        m_offers.words.push_back({word, description, isFinished, m_group});
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
    bool m_positionalFits;
    ValueSource* m_source;
    Garbage& m_texts;
    Offers m_offers;

    Place m_place = Place::kAnything;
    char const* m_optionWord = nullptr;
    char const* m_group = nullptr;
    std::string m_word;             // that may be offered
    std::string_view m_typedName;   // without its dashes
    std::size_t m_recordStart = 0;  // where the offers of the present declaration begin
    std::size_t m_pieceStart = 0;   // of the value being typed
    bool m_isAnswered = false;      // the source has said something, or is not asked
    std::set<std::string, std::less<>> m_values;  // that were offered
};

void walkOver(Walk& walk, std::vector<char const*> const& words) {
    ArgumentVector source(words.data(), words.size());
    walk.take(source);
}

/// Whether a value of the positional option fits at the cursor. `fitting` is of the line as it is;
/// with `takesRest`, the words after such a value are values too.
bool positionalFits(BasicParser& parser, ShellLine const& line, bool takesRest, Fitting& fitting,
                    Trial& trial) {
    RegisteredOptionStorage const& registry = parser.registry();
    if (registry.firstPositional() == NameIndex::kNone) {
        return false;
    }
    OptionDescription const& option = *registry.records()[registry.firstPositional()];
    if (!takesRest) {
        return fitting.fit(option) != nullptr;
    }
    Walk taken(parser);
    walkOver(taken, line.before);
    taken.goOn(Walk::Mode::kPositional);
    walkOver(taken, line.after);
    Fitting withValue(parser, taken, nullptr, trial);
    bool const spoilsLine = withValue.isWrong() && !fitting.isWrong();
    return !spoilsLine && withValue.fit(option) != nullptr;
}

}  // namespace

Offers listOffers(BasicParser& parser, ShellLine const& line, ValueSource* source, Garbage& texts) {
    Trial trial(parser);
    Walk walk(parser);
    walkOver(walk, line.before);
    Walk::Mode const mode = walk.mode();
    std::size_t const count = walk.words().size();
    bool const lacksValue = count != 0 && walk.words().back().lacksValue;
    walkOver(walk, line.after);
    WalkedWord const* const lacking = lacksValue ? &walk.words()[count - 1] : nullptr;
    Fitting fitting(parser, walk, lacking, trial);
    bool const takesRest = (parser.flags() & kTakeTheRest) != 0 && !line.after.empty() &&
                           mode == Walk::Mode::kAnything;
    bool const fits = positionalFits(parser, line, takesRest, fitting, trial);
    return Lister(parser, line.typed, trial, fitting, fits, source, texts).list(mode, lacking);
}

}  // namespace varo_3_3::internal
