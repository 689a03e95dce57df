#include "varo/mistakes.h"

#include <algorithm>
#include <climits>
#include <exception>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "options/value_text.h"
#include "parser/basic_parser.h"
#include "platform/join.h"
#include "recognizers/dashes.h"

namespace varo_3_3 {
namespace {

using Record = OptionDescription;

constexpr std::uint32_t kNone = NameIndex::kNone;

char const* nameOf(mosaic2::das_variant_type_t type) {
    return type == mosaic2::vtBool        ? "boolean"
           : type == mosaic2::vtNull      ? "null"
           : type == mosaic2::vtStringRef ? "string"
                                          : typeName(type);
}

bool isInteger(mosaic2::variant_t const& value) {
    return value.m_type != mosaic2::vtBool && value.can_get<long long>();
}

/// Whether `value` is an integer from `lowest` to `highest`.
bool isWithin(mosaic2::variant_t const& value, long long lowest, unsigned long long highest) {
    bool const isNegative = value.m_type % 2 == 0 && value.m_value.m_signed < 0;
    return isInteger(value) &&
           (isNegative ? value.m_value.m_signed >= lowest : value.m_value.m_unsigned <= highest);
}

/// Whether an option of this type could hold `value`: integers of other widths too if they fit, and
/// integers where doubles are expected.
bool isOfType(mosaic2::variant_t const& value, mosaic2::das_variant_type_t type) {
    switch (type) {
        case mosaic2::vtBool:
            return value.m_type == mosaic2::vtBool;
        case mosaic2::vtS32:
            return isWithin(value, INT_MIN, INT_MAX);
        case mosaic2::vtU32:
            return isWithin(value, 0, UINT_MAX);
        case mosaic2::vtS64:
            return isWithin(value, LLONG_MIN, LLONG_MAX);
        case mosaic2::vtU64:
            return isWithin(value, 0, ULLONG_MAX);
        case mosaic2::vtDouble:
            return value.m_type != mosaic2::vtBool && value.can_get<double>();
        case mosaic2::vtString:
            return value.can_get<char const*>();
        default:
            return false;
    }
}

bool isOneLetter(std::string_view name) {
    return std::count_if(name.begin(), name.end(),
                         [](char byte) { return (byte & 0xC0) != 0x80; }) < 2;
}

/// Looks at all declarations of one parser and writes a line for each mistake.
class Inspection {
public:
    explicit Inspection(BasicParser const& parser) : m_parser(parser) {}

    std::string mistakes() {
        for (Refusals::Entry const& entry : m_registry.refusals().entries()) {
            describeRefusal(entry);
        }
        addCount(m_registry.refusals().moreThanEntries(), " more declarations were refused.");
        addCount(m_registry.refusals().withoutMemory(),
                 " declarations were refused for lack of memory.");
        for (auto const& record : m_registry.records()) {
            checkNames(*record);
            checkActions(*record);
            checkPositional(*record);
            checkValues(*record);
        }
        for (std::set<std::string> const& group : m_parser.simultaneousActions()) {
            checkGroup(group);
        }
        return std::move(m_text);
    }

    std::string remarks() {
        for (auto const& record : m_registry.records()) {
            for (std::string_view const name : record->m_names) {
                m_isLength.resize(std::max(m_isLength.size(), name.size() + 1));
                m_isLength[name.size()] = 1;
            }
        }
        for (auto const& record : m_registry.records()) {
            for (std::string_view const name : record->m_names) {
                checkBeginnings(*record, name);
                if (record->m_type == mosaic2::vtBool) {
                    checkBeginnings(*record, internal::join({"no-", name}));
                }
            }
        }
        return std::move(m_text);
    }

private:
    // A line is written piece by piece: nothing that has to be destroyed, which keeps this small.
    Inspection& line() { return m_text.empty() ? *this : *this << '\n'; }
    Inspection& operator<<(char character) {
        m_text += character;
        return *this;
    }
    Inspection& operator<<(char const* text) {
        m_text += text;
        return *this;
    }
    Inspection& operator<<(std::string_view text) {
        m_text += text;
        return *this;
    }
    Inspection& quote(mosaic2::variant_t const& value) {
        m_text += '\'';
        appendText(m_text, value);
        return *this << '\'';
    }
    Inspection& operator<<(Record const& record) {
        return *this << (record.isAction()       ? "action '"
                         : record.m_tags.empty() ? "option '"
                                                 : "modifier '")
                     << record.firstName() << '\'';
    }
    Inspection& about(Record const& record) { return line() << "The " << record << ": "; }

    [[gnu::noinline]] Record const& recordAt(std::uint32_t number) const {
        return *m_registry.records()[number];
    }

    void describeRefusal(Refusals::Entry const& entry) {
        using enum Refusals::Reason;
        line() << "Refused was '" << entry.names << "': ";
        if (entry.reason == kNameTaken) {
            *this << "the " << recordAt(entry.holder) << " has one of these names.";
        } else {
            *this << (entry.reason == kNoNames        ? "the names are null."
                      : entry.reason == kTooManyNames ? "three names are the most."
                                                      : "a third name has two characters at most.");
        }
    }

    void addCount(std::size_t count, char const* what) {
        if (count != 0) {
            line();
            appendText(m_text, count);
            *this << what;
        }
    }

    void checkNames(Record const& record) {
        for (std::string_view const name : record.m_names) {
            if (getDashLength(name, 0) != 0) {
                about(record) << "names are written without dashes, not '" << name << "'.";
            } else if (name.empty() ? !record.m_isPositional
                                    : name.find_first_of("= \t\n\v\f\r") != name.npos) {
                about(record) << "nobody can type the name '" << name << "'.";
            }
            checkHidden(record, name);
            if (record.m_type == mosaic2::vtBool) {
                checkHidden(record, internal::join({"no-", name}));
            }
        }
    }

    /// Modifiers of different actions may share a name, but no other declarations.
    void checkHidden(Record const& record, std::string_view name) {
        std::uint32_t found = m_registry.names().findRecord(name, m_noTags);
        if (found != kNone && found != record.m_index && !record.m_tags.empty() &&
            !recordAt(found).m_tags.empty()) {
            if (recordAt(found).m_type != record.m_type) {
                about(record) << "the values of '" << name << "' become those of the "
                              << recordAt(found) << " declared earlier, which has the type '"
                              << nameOf(recordAt(found).m_type) << "'.";
            }
            found = m_registry.names().findRecord(name, record.m_tags);
        }
        if (found != kNone && found != record.m_index) {
            about(record) << "its name '" << name << "' leads to the " << recordAt(found) << '.';
        }
    }

    void checkActions(Record const& record) {
        for (std::string const& tag : record.m_tags) {
            if (!record.isAction() && !isActionTag(tag)) {
                about(record) << "there is no action '" << tag << "'.";
            }
        }
    }

    bool isActionTag(std::string const& tag) const {
        auto const isAction = [](Record const& record) { return record.isAction(); };
        bool isFound = m_registry.names().anyRecordNamed(tag, isAction);
        for (std::size_t number = 0; !isFound && number < m_registry.records().size(); ++number) {
            Record const& record = *m_registry.records()[number];
            isFound = record.isAction() && record.m_tags.contains(tag);  // beside its names
        }
        return isFound;
    }

    void checkPositional(Record const& record) {
        if (record.m_isPositional && record.m_index != m_registry.firstPositional()) {
            about(record) << "positional arguments go to the "
                          << recordAt(m_registry.firstPositional()) << " alone.";
        }
    }

    void checkValues(Record const& record) {
        for (mosaic2::variant_t const& allowed : record.m_allowedValues) {
            if (checkType(record, "allowed", allowed) && record.m_type == mosaic2::vtString &&
                record.m_tokenizer != 0 &&
                std::string_view(allowed.get<char const*>()).find(record.m_tokenizer) !=
                    std::string_view::npos) {
                (about(record) << "the allowed value ").quote(allowed)
                    << " holds the separator '" << record.m_tokenizer << "'.";
            }
        }
        for (auto const& [deprecated, replacement] : record.m_deprecatedValues) {
            checkType(record, "deprecated", deprecated);
            checkType(record, "replacing", replacement);
        }
        if (record.m_hasDefault && checkType(record, "default", record.m_defaultValue) &&
            !record.m_allowedValues.empty() && !record.isAllowed(record.m_defaultValue)) {
            (about(record) << "the default ").quote(record.m_defaultValue)
                << " is not among the allowed values.";
        }
    }

    bool checkType(Record const& record, char const* role, mosaic2::variant_t const& value) {
        bool const isRight = isOfType(value, record.m_type);
        if (!isRight) {
            (about(record) << "the " << role << ' ' << nameOf(value.m_type) << ' ').quote(value)
                << " is no value of type '" << nameOf(record.m_type) << "'.";
        }
        return isRight;
    }

    void checkBeginnings(Record const& record, std::string_view name) {
        std::size_t const end = std::min(name.size(), m_isLength.size());
        for (std::size_t size = 1; size < end; ++size) {
            if (m_isLength[size] == 0) {
                continue;
            }
            std::string_view const beginning = name.substr(0, size);
            m_registry.names().anyRecordNamed(beginning, [&](Record const& other) {
                if (&other != &record && !isOneLetter(beginning)) {
                    about(record) << "its name '" << name << "' begins with '" << beginning
                                  << "' of the " << other << '.';
                }
                return false;
            });
        }
    }

    void checkGroup(std::set<std::string> const& group) {
        for (std::string const& action : group) {
            auto const isPrimary = [&](Record const& record) {
                return record.isAction() && record.firstName() == action;
            };
            if (!m_registry.names().anyRecordNamed(action, isPrimary)) {
                line() << "Simultaneous actions: none has the primary name '" << action << "'.";
            }
        }
    }

    BasicParser const& m_parser;
    RegisteredOptionStorage const& m_registry = m_parser.registry();
    std::set<std::string> const m_noTags;
    std::string m_isLength;  // of some name: no other beginning can be one
    std::string m_text;
};

/// The text of an inspection, held by the parser; "" for a parser that is not ours.
char const* describe(IParser* parser, std::string (Inspection::*inspect)()) {
    BasicParser* const ours = basicParserOf(parser);
    if (ours == nullptr) {
        return "";
    }
    try {
        return ours->texts().init((Inspection(*ours).*inspect)());
    } catch (std::exception const&) {
        return "Out of memory.";
    }
}

}  // namespace

char const* describeMistakes(IParser* parser) {
    return describe(parser, &Inspection::mistakes);
}

char const* describeRemarks(IParser* parser) {
    return describe(parser, &Inspection::remarks);
}

bool isRefused(IParser* parser, IOption const* option) {
    BasicParser* const ours = basicParserOf(parser);
    return ours != nullptr && ours->registry().isPlaceholder(option);
}

}  // namespace varo_3_3
