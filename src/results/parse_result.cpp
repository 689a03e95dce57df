#include "results/parse_result.h"

#include <algorithm>
#include <limits>

#include "platform/join.h"
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
    return selectDefault(*entry) || findOccurrence(*entry, from, to) < entry->occurrences.size();
}

Value ParseResult::get(char const* name, int from, int to) {
    Entry const* const entry = select(name, from, to);
    if (entry == nullptr) {
        return {};
    }
    if (selectDefault(*entry)) {
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

void ParseResult::store(OptionDescription const& option, OptionData& data) {
    Place place = preparePlace(option);
    Entry& entry = *place.entry;
    keepTexts(data.m_values);
    BRIX::reserveMore(entry.occurrences, data.m_positions.size());
    BRIX::reserveMore(entry.values, data.m_values.size());
    if (entry.values.size() > std::numeric_limits<std::uint32_t>::max()) {
        BRIX::throwLengthError("too many values of one option");
    }

    bool const followsOccurrences =
        entry.occurrences.empty() || entry.occurrences.back().position <= data.m_positions.front();
    bool const followsValues = entry.values.empty() || data.m_values.empty() ||
                               entry.values.back().position() <= data.m_values.front().position();
    entry.isAscending = entry.isAscending && followsOccurrences && followsValues;
    auto const firstValue = static_cast<std::uint32_t>(entry.values.size());
    for (int const position : data.m_positions) {
        entry.occurrences.push_back({position, firstValue});
    }
    std::move(data.m_values.begin(), data.m_values.end(), std::back_inserter(entry.values));
    commit(std::move(place), option);
}

void ParseResult::applyDefault(RegisteredOptionStorage const& registry) {
    for (std::uint32_t const number : registry.withDefault()) {
        OptionDescription const& option = *registry.records()[number];
        Place place = preparePlace(option);
        char const* const text = option.toString(&m_texts, option.m_defaultValue);
        place.entry->defaultValue =
            Value(text, option.m_defaultValue, IArgumentParser::takePosition());
        place.entry->hasDefault = true;
        commit(std::move(place), option);
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

ParseResult::Place ParseResult::preparePlace(OptionDescription const& option) {
    Place place{HashIndex::kNone, nullptr, nullptr, {}};
    for (std::string const& name : option.m_names) {
        place.number = findKey(name, BRIX::TextHash::of(name));
        if (place.number != HashIndex::kNone) {
            break;
        }
    }
    if (place.number != HashIndex::kNone) {
        place.entry = m_entries[place.number].get();
    } else {
        place.number = static_cast<std::uint32_t>(m_entries.size());
        place.newEntry = std::make_unique<Entry>();
        place.entry = place.newEntry.get();
        place.entry->key = option.firstName();
        BRIX::reserveMore(m_entries, 1);
        m_keys.reserveMore(1);
    }
    Entry const& entry = *place.entry;
    if (entry.record == &option && entry.recordNames == option.m_names.size() &&
        entry.generation == m_generation) {
        return place;
    }
    for (std::string const& name : option.m_names) {
        std::uint32_t const hash = BRIX::TextHash::of(name);
        if (name != entry.key && findAlias(name, hash) == HashIndex::kNone) {
            place.newAliases.push_back({name, hash, place.number});
        }
    }
    if (!place.newAliases.empty()) {
        BRIX::reserveMore(m_aliases, place.newAliases.size());
        m_aliasIndex.reserveMore(place.newAliases.size());
    }
    return place;
}

void ParseResult::commit(Place place, OptionDescription const& option) noexcept {
    place.entry->record = &option;
    place.entry->recordNames = option.m_names.size();
    place.entry->generation = m_generation;
    if (place.newEntry != nullptr) {
        m_keys.insert(BRIX::TextHash::of(place.entry->key), place.number);
        m_entries.push_back(std::move(place.newEntry));
    }
    for (Alias& alias : place.newAliases) {
        m_aliasIndex.insert(alias.hash, static_cast<std::uint32_t>(m_aliases.size()));
        m_aliases.push_back(std::move(alias));
    }
}

/// Copies the texts that are not the characters of the value itself, which the result owns anyway.
void ParseResult::keepTexts(std::vector<Value>& values) {
    for (Value& value : values) {
        if (value.text() != value.as<char const*>()) {
            value = Value(m_texts.keep(value.text()), value.value(), value.position());
        }
    }
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

/// Whether the selected entry holds a default alone, which is answered for every range and leaves
/// nothing to iterate.
bool ParseResult::selectDefault(Entry const& entry) {
    if (!entry.hasDefault || !entry.occurrences.empty()) {
        return false;
    }
    m_from = kNoPosition;
    m_to = kNoPosition;
    return true;
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
