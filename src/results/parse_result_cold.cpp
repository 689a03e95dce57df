#include "platform/reserve_more.h"
#include "results/parse_result.h"

namespace varo_3_3 {

// What of a result runs a few times in a parse, and is built for size: defaults, aliases, and what
// the action rules ask.

using internal::HashIndex;

ParseResult::ParseResult() = default;
ParseResult::~ParseResult() = default;

void ParseResult::destroy() {
    delete this;
}

void ParseResult::setDefault(OptionDescription const& option, int position) {
    char const* const text = option.toString(&m_texts, option.m_defaultValue);
    Entry& entry = entryFor(option);
    mosaic2::variant_t const& earlier = entry.defaultValue.value();
    if (earlier.m_type == mosaic2::vtString &&
        earlier.m_value.m_data != option.m_defaultValue.m_value.m_data) {
        m_earlierDefaults.push_back(entry.defaultValue);
    }
    Value value(text, option.m_defaultValue, position);
    std::swap(entry.defaultValue, value);
    entry.hasDefault = true;  // the earlier one is destroyed last: it may parse into this result
}

Value ParseResult::defaultOf(std::string_view name) const {
    std::uint32_t const number = findEntry(name);
    return number != HashIndex::kNone ? m_entries[number].defaultValue : Value();
}

int ParseResult::firstOccurrence(std::string_view name, int from) const {
    std::uint32_t const number = findEntry(name);
    if (number == HashIndex::kNone) {
        return kNoPosition;
    }
    Entry const& entry = m_entries[number];
    std::size_t const at = findItem(entry, from, kNoPosition);
    return at < entry.items.size() ? entry.items[at].occurrence : kNoPosition;
}

std::optional<std::string_view> ParseResult::givenKey(std::string_view name) const {
    std::uint32_t const number = findEntry(name);
    bool const isGiven = number != HashIndex::kNone && !m_entries[number].items.empty();
    return isGiven ? std::optional(m_entries[number].key) : std::nullopt;
}

std::vector<GivenOption> ParseResult::givenOptions() const {
    std::vector<GivenOption> given;
    given.reserve(m_entries.size());
    for (Entry const& entry : m_entries) {
        internal::emplaceReserved(given, GivenOption{entry.key, !entry.items.empty()});
    }
    return given;
}

std::uint32_t ParseResult::findAlias(std::string_view name, std::uint32_t hash) const {
    indexAliases();
    return m_aliasIndex.find(
        hash, [&](std::uint32_t candidate) { return m_aliases[candidate].name == name; });
}

/// Adds the aliases made since the last search by alias to their index, which has room.
void ParseResult::indexAliases() const {
    for (; m_indexed < m_aliases.size(); ++m_indexed) {
        std::string_view const name = m_aliases[m_indexed].name;
        std::uint32_t const hash = internal::TextHash::of(name);
        auto const isSame = [&](std::uint32_t earlier) { return m_aliases[earlier].name == name; };
        if (m_aliasIndex.find(hash, isSame) == HashIndex::kNone) {
            m_aliasIndex.insert(hash, static_cast<std::uint32_t>(m_indexed));
        }
    }
}

}  // namespace varo_3_3
