#include "results/parse_result.h"

#include <sys/single_threaded.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/reserve_more.h"

namespace varo_3_3 {

using internal::HashIndex;

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
    return findItem(*entry, from, to) < entry->items.size();
}

Value ParseResult::get(char const* name, int from, int to) {
    Entry const* const entry = select(name, from, to);
    if (entry == nullptr) {
        return {};
    }
    if (isDefaultAlone(*entry)) {
        return entry->defaultValue;
    }
    std::size_t const at = findItem(*entry, from, to);
    if (at == entry->items.size()) {
        return {};
    }
    Item const& item = entry->items[at];
    m_nextItem = at + 1;
    return ItemList::valueOf(item, item.occurrence);
}

Value ParseResult::next(char const* name) {
    if (name == nullptr || m_selected == HashIndex::kNone) {
        return {};
    }
    Entry const& entry = m_entries[m_selected];
    bool const isSelected =
        std::strcmp(entry.key.data(), name) == 0 || findEntry(name) == m_selected;
    if (!isSelected || !skipToNext(entry)) {
        return {};
    }
    Item const& item = entry.items[m_nextItem++];
    return ItemList::valueOf(item, item.position);
}

int ParseResult::nextPosition() {
    if (m_selected == HashIndex::kNone) {
        return kNoPosition;
    }
    Entry const& entry = m_entries[m_selected];
    return skipToNext(entry) ? entry.items[m_nextItem].position : kNoPosition;
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
    std::span<NewValue> const stored = data.m_values;
    for (NewValue& value : stored) {
        // The characters of a string live in the result anyway.
        mosaic2::variant_t const& variant = value.value;
        if (variant.m_type != mosaic2::vtString || variant.m_value.m_text != value.text.data()) {
            value.text = keep(value.text);
        }
    }
    Entry& entry = entryFor(option);
    auto const count = static_cast<std::uint32_t>(stored.size());
    entry.items.reserveMore(std::max(count, 1U));

    entry.isAscending = entry.isAscending && entry.lastPosition <= data.m_position;
    if (count == 0) {
        entry.items.appendOccurrence(data.m_position);
    }
    for (NewValue& value : stored) {
        entry.items.append(value, data.m_position);
        entry.hasValues = true;
    }
    entry.lastPosition = entry.items.back().position;
}

void ParseResult::storeArgument(std::string_view text, int position) {
    internal::reserveMore(m_arguments, 1);
    internal::emplaceReserved(m_arguments, Argument{m_texts.keep(text), position});
}

std::uint32_t ParseResult::findKey(std::string_view name, std::uint32_t hash) const {
    return m_keys.find(hash,
                       [&](std::uint32_t candidate) { return m_entries[candidate].key == name; });
}

/// The entry with this key, or else the one that this synonym leads to.
std::uint32_t ParseResult::findEntry(std::string_view name) const {
    std::uint32_t const hash = internal::TextHash::of(name);
    std::uint32_t const number = findKey(name, hash);
    if (number != HashIndex::kNone) {
        return number;
    }
    std::uint32_t const alias = findAlias(name, hash);
    return alias != HashIndex::kNone ? m_aliases[alias].entry : HashIndex::kNone;
}

/// The entry for an occurrence of `option`. When this throws, nothing has changed.
ParseResult::Entry& ParseResult::entryFor(OptionDescription const& option) {
    std::uint32_t const number =
        option.m_stamp == m_stamp ? option.m_entry : findOrAddEntry(option);
    return m_entries[number];
}

std::uint32_t ParseResult::findOrAddEntry(OptionDescription const& option) {
    std::uint32_t const hash = internal::TextHash::of(option.firstName());
    std::uint32_t number = findEntryOf(option, hash);
    if (number != HashIndex::kNone) {
        meet(option, number);
    } else {
        number = static_cast<std::uint32_t>(m_entries.size());
        std::string_view const key = keep(option.firstName());
        internal::reserveMore(m_entries, 1, 16);
        m_keys.reserveMore(1);
        addAliases(option, key, number);
        m_keys.insert(hash, number);
        Entry& entry = internal::emplaceReserved(m_entries);
        entry.key = key;
        entry.record = &option;
        entry.names = option.m_names.size();
        entry.parse = m_parse;
        ++m_met;
        m_stamp = newStamp();  // the new key may come first among the names of other records
    }
    option.m_stamp = m_stamp;
    option.m_entry = number;
    return number;
}

/// Notes that a record leads to an entry that is there already.
void ParseResult::meet(OptionDescription const& option, std::uint32_t number) {
    Entry& entry = m_entries[number];
    bool const isMet = entry.parse == m_parse;
    if (isMet && entry.record == &option && entry.names == option.m_names.size()) {
        return;
    }
    addAliases(option, entry.key, number);
    entry.record = &option;
    entry.names = option.m_names.size();
    entry.parse = m_parse;
    m_met += isMet ? 0 : 1;
}

/// The entry whose key is the first of the option's names that is a key; `hash` is that of its
/// primary name.
std::uint32_t ParseResult::findEntryOf(OptionDescription const& option, std::uint32_t hash) const {
    std::uint32_t number = findKey(option.firstName(), hash);
    for (std::size_t at = 1; number == HashIndex::kNone && at < option.m_names.size(); ++at) {
        number = findKey(option.m_names[at], internal::TextHash::of(option.m_names[at]));
    }
    return number;
}

/// Makes the names of `option` that do not lead to an entry yet, except its `key`, lead to `entry`,
/// which may be about to be added. When this throws, no alias leads to an entry that is not there.
void ParseResult::addAliases(OptionDescription const& option, std::string_view key,
                             std::uint32_t entry) {
    bool const isNew = entry == m_entries.size();
    std::size_t const oldSize = m_aliases.size();
    m_aliasIndex.reserveMore(oldSize - m_indexed + option.m_names.size());
    try {
        // The primary name of a new entry is its key; the others are checked only when one is
        // looked up.
        for (std::size_t at = isNew ? 1 : 0; at < option.m_names.size(); ++at) {
            std::string_view const name = option.m_names[at];
            if (isNew || (name != key &&
                          findAlias(name, internal::TextHash::of(name)) == HashIndex::kNone)) {
                internal::reserveMore(m_aliases, 1, 16);
                internal::emplaceReserved(m_aliases, Alias{keep(name), entry});
            }
        }
    } catch (...) {
        if (isNew) {
            m_aliases.resize(oldSize);
        }
        throw;
    }
}

std::uint64_t ParseResult::newStamp() {
    static std::uint64_t last = 0;
    return __libc_single_threaded ? ++last : __atomic_add_fetch(&last, 1, __ATOMIC_RELAXED);
}

std::string_view ParseResult::keep(std::string_view text) {
    return {m_texts.keep(text), text.size()};
}

/// Begins an iteration over the values of `name` in a range. Null when there is no such entry.
ParseResult::Entry* ParseResult::select(char const* name, int from, int to) {
    m_from = from;
    m_to = to;
    m_nextItem = 0;
    m_selected = name != nullptr ? findEntry(name) : HashIndex::kNone;
    return m_selected != HashIndex::kNone ? &m_entries[m_selected] : nullptr;
}

/// Whether the entry holds a default and was never given: then the default answers for every range.
bool ParseResult::isDefaultAlone(Entry const& entry) {
    return entry.hasDefault && entry.items.empty();
}

/// The number of the first item whose occurrence has from <= position < to; their count if
/// none has.
std::size_t ParseResult::findItem(Entry const& entry, int from, int to) {
    auto const& items = entry.items;
    auto const isBefore = [from](Item const& item) { return item.occurrence < from; };
    auto const isInside = [from, to](Item const& item) {
        return from <= item.occurrence && item.occurrence < to;
    };
    auto const found = entry.isAscending
                           ? std::partition_point(items.begin(), items.end(), isBefore)
                           : std::find_if(items.begin(), items.end(), isInside);
    bool const isFound = found != items.end() && isInside(*found);
    return isFound ? static_cast<std::size_t>(found - items.begin()) : items.size();
}

/// Moves the iteration past what lies before its range and, where values are stored, past
/// occurrences without one. Returns whether any of the range is left; unlike in findItem, its end
/// is included.
bool ParseResult::skipToNext(Entry const& entry) {
    auto const isBefore = [this](Item const& item) { return item.position < m_from; };
    Item const* const begin = entry.items.begin();
    Item const* const end = begin + entry.items.size();
    Item const* at = begin + m_nextItem;
    if (at != end && at->isValue && !isBefore(*at)) {
        return at->position <= m_to;  // usually it is there already
    }
    if (at != end && isBefore(*at) && entry.isAscending) {
        at = std::partition_point(at, end, isBefore);
    }
    while (at != end && (isBefore(*at) || (entry.hasValues && !at->isValue))) {
        ++at;
    }
    m_nextItem = static_cast<std::size_t>(at - begin);
    return at != end && at->position <= m_to;
}

}  // namespace varo_3_3
