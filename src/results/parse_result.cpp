#include "results/parse_result.h"

#include <algorithm>
#include <limits>

#include "platform/reserve_more.h"
#include "platform/throw.h"
#include "recognizers/argument_parser.h"

namespace varo_3_3 {

using BRIX::HashIndex;

void ParseResult::destroy() {
    delete this;
}

bool ParseResult::present(char const* name, int from, int to) {
    Entry const* const entry = select(name, from, to);
    if (entry == nullptr) {
        return false;
    }
    if (isDefaultAlone(*entry)) {
        m_from = kNoPosition;
        m_to = kNoPosition;
        return true;
    }
    return findOccurrence(*entry, from, to) < entry->occurrences.size();
}

Value ParseResult::get(char const* name, int from, int to) {
    Entry const* const entry = select(name, from, to);
    if (entry == nullptr) {
        return {};
    }
    if (isDefaultAlone(*entry)) {
        return entry->defaultValue;
    }
    std::size_t const at = findOccurrence(*entry, from, to);
    if (at == entry->occurrences.size()) {
        return {};
    }
    Occurrence const& occurrence = entry->occurrences[at];
    bool const isLast = at + 1 == entry->occurrences.size();
    std::size_t const end = isLast ? entry->values.size() : entry->occurrences[at + 1].firstValue;
    m_nextOccurrence = at + 1;
    m_nextValue = occurrence.firstValue;
    if (m_nextValue == end) {
        return Value("", mosaic2::variant_t(), occurrence.position);
    }
    Value const& value = entry->values[m_nextValue++];
    return Value(value.text(), value.value(), occurrence.position);
}

Value ParseResult::next(char const* name) {
    if (name == nullptr || m_selected == HashIndex::kNone) {
        return {};
    }
    Entry const& entry = *m_entries[m_selected];
    bool const isSelected = entry.key == name || findEntry(name) == m_selected;
    if (!isSelected || !skipToNext(entry)) {
        return {};
    }
    if (!entry.values.empty()) {
        return entry.values[m_nextValue++];
    }
    return Value("", mosaic2::variant_t(), entry.occurrences[m_nextOccurrence++].position);
}

int ParseResult::nextPosition() {
    if (m_selected == HashIndex::kNone) {
        return kNoPosition;
    }
    Entry const& entry = *m_entries[m_selected];
    if (!skipToNext(entry)) {
        return kNoPosition;
    }
    return entry.values.empty() ? entry.occurrences[m_nextOccurrence].position
                                : entry.values[m_nextValue].position();
}

int ParseResult::getFirstArgument(char const** text) {
    m_nextArgument = 0;
    return getNextArgument(text);
}

int ParseResult::getNextArgument(char const** text) {
    if (text == nullptr || m_nextArgument == m_arguments.size()) {
        return 1;
    }
    *text = m_arguments[m_nextArgument++].text;
    return 0;
}

void ParseResult::store(OptionDescription const& option, OptionData const& data) {
    std::span<Value> const stored = data.m_values;
    for (Value& value : stored) {
        mosaic2::variant_t const& variant = value.value();
        if (variant.m_type != mosaic2::vtString || variant.m_value.m_text != value.text()) {
            keepText(value);
        }
    }
    Entry& entry = entryFor(option, stored.size());
    BRIX::reserveMore(entry.occurrences, 1);
    BRIX::reserveMore(entry.values, stored.size());
    if (entry.values.size() > std::numeric_limits<std::uint32_t>::max()) {
        BRIX::throwLengthError("too many values of one option");
    }

    entry.isAscending = entry.isAscending && entry.lastPosition <= data.m_position;
    entry.lastPosition = stored.empty() ? data.m_position : stored.back().position();
    entry.occurrences.push_back({data.m_position, static_cast<std::uint32_t>(entry.values.size())});
    for (Value& value : stored) {
        entry.values.push_back(std::move(value));
    }
}

void ParseResult::applyDefault(RegisteredOptionStorage const& registry) {
    for (std::uint32_t const number : registry.withDefault()) {
        OptionDescription const& option = *registry.records()[number];
        char const* const text = option.toString(&m_texts, option.m_defaultValue);
        Entry& entry = entryFor(option, 0);
        mosaic2::variant_t const& earlier = entry.defaultValue.value();
        if (earlier.m_type == mosaic2::vtString &&
            earlier.m_value.m_data != option.m_defaultValue.m_value.m_data) {
            m_earlierDefaults.push_back(entry.defaultValue);
        }
        entry.defaultValue = Value(text, option.m_defaultValue, IArgumentParser::takePosition());
        entry.hasDefault = true;
    }
}

void ParseResult::storeArgument(std::string_view text) {
    BRIX::reserveMore(m_arguments, 1);
    m_arguments.push_back({m_texts.keep(text), IArgumentParser::takePosition()});
}

Value ParseResult::defaultOf(std::string_view name) const {
    std::uint32_t const number = findEntry(name);
    return number != HashIndex::kNone ? m_entries[number]->defaultValue : Value();
}

std::vector<std::string_view> ParseResult::givenOptions() const {
    std::vector<std::string_view> keys;
    keys.reserve(m_entries.size());
    for (std::unique_ptr<Entry> const& entry : m_entries) {
        if (!entry->occurrences.empty()) {
            keys.emplace_back(entry->key);
        }
    }
    return keys;
}

std::uint32_t ParseResult::findKey(std::string_view name, std::uint32_t hash) const {
    return m_keys.find(hash,
                       [&](std::uint32_t candidate) { return m_entries[candidate]->key == name; });
}

std::uint32_t ParseResult::findAlias(std::string_view name, std::uint32_t hash) const {
    return m_aliasIndex.find(
        hash, [&](std::uint32_t candidate) { return m_aliases[candidate].name == name; });
}

/// The entry with this key, or else the one that this synonym leads to.
std::uint32_t ParseResult::findEntry(std::string_view name) const {
    std::uint32_t const hash = BRIX::TextHash::of(name);
    std::uint32_t const number = findKey(name, hash);
    if (number != HashIndex::kNone) {
        return number;
    }
    std::uint32_t const alias = findAlias(name, hash);
    return alias != HashIndex::kNone ? m_aliases[alias].entry : HashIndex::kNone;
}

/// The entry for an occurrence of `option` with so many values, a new one with room for them. When
/// this throws, nothing has changed.
ParseResult::Entry& ParseResult::entryFor(OptionDescription const& option, std::size_t values) {
    std::uint32_t const number = m_recent[option.m_index % m_recent.size()];
    if (number < m_entries.size()) {
        Entry& entry = *m_entries[number];
        if (entry.record == &option && entry.recordNames == option.m_names.size() &&
            entry.generation == m_generation) {
            return entry;
        }
    }
    return findOrAddEntry(option, values);
}

ParseResult::Entry& ParseResult::findOrAddEntry(OptionDescription const& option,
                                                std::size_t values) {
    std::uint32_t number = HashIndex::kNone;
    for (std::string const& name : option.m_names) {
        number = findKey(name, BRIX::TextHash::of(name));
        if (number != HashIndex::kNone) {
            break;
        }
    }
    std::unique_ptr<Entry> newEntry;
    if (number == HashIndex::kNone) {
        number = static_cast<std::uint32_t>(m_entries.size());
        newEntry = std::make_unique<Entry>();
        newEntry->key = option.firstName();
        newEntry->occurrences.reserve(1);
        newEntry->values.reserve(values);
        BRIX::reserveMore(m_entries, 1, 16);
        m_keys.reserveMore(1);
    }
    std::vector<Alias> aliases = findNewAliases(option, number);
    BRIX::reserveMore(m_aliases, aliases.size(), 16);
    m_aliasIndex.reserveMore(aliases.size());

    if (newEntry != nullptr) {
        m_keys.insert(BRIX::TextHash::of(newEntry->key), number);
        m_entries.push_back(std::move(newEntry));
        ++m_generation;  // the new key may come first among the names of other records
    }
    for (Alias& alias : aliases) {
        m_aliasIndex.insert(alias.hash, static_cast<std::uint32_t>(m_aliases.size()));
        m_aliases.push_back(std::move(alias));
    }
    Entry& entry = *m_entries[number];
    entry.record = &option;
    entry.recordNames = option.m_names.size();
    entry.generation = m_generation;
    m_recent[option.m_index % m_recent.size()] = number;
    return entry;
}

/// The names of `option` that do not lead to an entry yet, except the entry's own key.
std::vector<ParseResult::Alias> ParseResult::findNewAliases(OptionDescription const& option,
                                                            std::uint32_t entry) const {
    std::vector<Alias> aliases;
    std::string_view const key =
        entry < m_entries.size() ? std::string_view(m_entries[entry]->key) : option.firstName();
    for (std::string const& name : option.m_names) {
        std::uint32_t const hash = BRIX::TextHash::of(name);
        if (name != key && findAlias(name, hash) == HashIndex::kNone) {
            aliases.push_back({name, hash, entry});
        }
    }
    return aliases;
}

/// Gives a value a text of its own. (The characters of a string live in the result anyway.)
void ParseResult::keepText(Value& value) {
    value = Value(m_texts.keep(value.text()), value.value(), value.position());
}

/// Begins an iteration over the values of `name` in a range. Null when there is no such entry.
ParseResult::Entry* ParseResult::select(char const* name, int from, int to) {
    m_from = from;
    m_to = to;
    m_nextValue = 0;
    m_nextOccurrence = 0;
    m_selected = name != nullptr ? findEntry(name) : HashIndex::kNone;
    return m_selected != HashIndex::kNone ? m_entries[m_selected].get() : nullptr;
}

/// Whether the entry holds a default and was never given: then the default answers for every range.
bool ParseResult::isDefaultAlone(Entry const& entry) {
    return entry.hasDefault && entry.occurrences.empty();
}

/// The number of the first occurrence with from <= position < to; that behind the last if none has.
std::size_t ParseResult::findOccurrence(Entry const& entry, int from, int to) {
    auto const& occurrences = entry.occurrences;
    auto found =
        entry.isAscending
            ? std::lower_bound(occurrences.begin(), occurrences.end(), from,
                               [](Occurrence const& occurrence, int position) {
                                   return occurrence.position < position;
                               })
            : std::find_if(occurrences.begin(), occurrences.end(),
                           [&](Occurrence const& occurrence) {
                               return from <= occurrence.position && occurrence.position < to;
                           });
    if (found != occurrences.end() && found->position >= to) {
        found = occurrences.end();
    }
    return static_cast<std::size_t>(found - occurrences.begin());
}

/// Moves the iteration over what lies before its range. Whether something of the range is left; its
/// last position belongs to it, unlike in findOccurrence.
bool ParseResult::skipToNext(Entry const& entry) {
    auto const skip = [&](auto const& items, std::size_t& next, auto positionOf) {
        auto const isBefore = [&](auto const& item) { return positionOf(item) < m_from; };
        auto at = items.begin() + static_cast<std::ptrdiff_t>(next);
        if (at != items.end() && isBefore(*at)) {
            at = entry.isAscending ? std::partition_point(at, items.end(), isBefore)
                                   : std::find_if_not(at, items.end(), isBefore);
            next = static_cast<std::size_t>(at - items.begin());
        }
        return at != items.end() && positionOf(*at) <= m_to;
    };
    return entry.values.empty()
               ? skip(entry.occurrences, m_nextOccurrence,
                      [](Occurrence const& occurrence) { return occurrence.position; })
               : skip(entry.values, m_nextValue,
                      [](Value const& value) { return value.position(); });
}

}  // namespace varo_3_3
