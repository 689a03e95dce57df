#include "options/name_index.h"

#include <algorithm>

#include "platform/join.h"
#include "platform/reserve_more.h"
#include "platform/text_lead.h"

namespace varo_3_3 {

using internal::Lead;

void NameIndex::reserveMore(OptionDescription const& record, std::size_t names, std::size_t tags) {
    std::size_t const keys = names * spellingsOf(record) * (1 + tags);
    internal::reserveMore(m_keys, keys, 64);  // a small tool's names, in one allocation
    m_heads.reserveMore(keys);
}

void NameIndex::addRecord(OptionDescription const& record) noexcept {
    for (std::size_t name = 0; name < record.m_names.size(); ++name) {
        addName(record, name);
    }
}

void NameIndex::addName(OptionDescription const& record, std::size_t name) noexcept {
    for (unsigned spelling = 0; spelling < spellingsOf(record); ++spelling) {
        Key key = keyOf(record, name, spelling != 0);
        insert(key);
        for (std::string const& tag : record.m_tags) {
            key.tag = &tag;
            insert(key);
        }
    }
}

void NameIndex::addTag(OptionDescription const& record, std::string const& tag) noexcept {
    for (std::size_t name = 0; name < record.m_names.size(); ++name) {
        for (unsigned spelling = 0; spelling < spellingsOf(record); ++spelling) {
            Key key = keyOf(record, name, spelling != 0);
            key.tag = &tag;
            insert(key);
        }
    }
}

void NameIndex::removeRecord(OptionDescription const& record) noexcept {
    for (std::size_t name = 0; name < record.m_names.size(); ++name) {
        for (unsigned spelling = 0; spelling < spellingsOf(record); ++spelling) {
            Key key = keyOf(record, name, spelling != 0);
            remove(key);
            for (std::string const& tag : record.m_tags) {
                key.tag = &tag;
                remove(key);
            }
        }
    }
}

std::uint32_t NameIndex::findRecord(std::string_view name,
                                    std::set<std::string> const& tags) const {
    std::uint32_t found = kNone;
    if (tags.empty()) {
        std::uint32_t const head = findHead(name, nullptr);
        return head == kNone ? kNone : m_keys[head].record;
    }
    for (std::string const& tag : tags) {
        std::uint32_t const head = findHead(name, &tag);
        if (head != kNone) {
            found = std::min(found, m_keys[head].record);
        }
    }
    return found;
}

NameIndex::BestMatch NameIndex::find_best_match(std::string_view typed, std::uint32_t exact) {
    BestMatch match;
    if (typed.empty()) {
        return match;
    }
    if (exact != kNone) {
        match.first = exact;
        match.isExact = true;
        match.isUnique = isAlone(exact);
        return match;
    }
    sortHeads();
    std::uint64_t const lead = internal::leadOf(typed);
    auto const begin =
        std::partition_point(m_sorted.begin(), m_sorted.end(), [&](Lead const& sorted) {
            return sorted.lead != lead ? sorted.lead < lead : m_keys[sorted.item].text < typed;
        });
    auto const fits = [&](Lead const& sorted) {
        return m_keys[sorted.item].text.starts_with(typed);
    };
    if (begin == m_sorted.end() || !fits(*begin)) {
        return match;
    }
    auto end = begin + 1;
    if (end != m_sorted.end() && fits(*end)) {
        end = std::partition_point(end, m_sorted.end(), fits);
    }
    match.begin = static_cast<std::size_t>(begin - m_sorted.begin());
    match.end = static_cast<std::size_t>(end - m_sorted.begin());
    match.first = begin->item;
    match.isUnique = end - begin == 1 && isAlone(match.first);
    if (end - begin > 1) {
        match.first = earliestOf(match.begin, match.end);
    }
    return match;
}

/// The earliest key among those of a range of the sorted array. A tree over the array answers for
/// wide ranges, such as those of an abbreviation of a thousand names: its leaves are the keys,
/// every other node is the earlier of its two children.
std::uint32_t NameIndex::earliestOf(std::size_t begin, std::size_t end) {
    constexpr std::size_t kNarrow = 32;  // faster to look through than the tree
    auto const earlier = [this](std::uint32_t left, std::uint32_t right) {
        return isEarlier(m_keys[left], m_keys[right]) ? left : right;
    };
    std::uint32_t found = m_sorted[begin].item;
    if (end - begin <= kNarrow) {
        for (std::size_t at = begin + 1; at < end; ++at) {
            found = earlier(found, m_sorted[at].item);
        }
        return found;
    }
    std::size_t const count = m_sorted.size();
    if (m_earliest.empty()) {
        m_earliest.resize(2 * count);
        for (std::size_t at = 0; at < count; ++at) {
            m_earliest[count + at] = m_sorted[at].item;
        }
        for (std::size_t at = count - 1; at > 0; --at) {
            m_earliest[at] = earlier(m_earliest[2 * at], m_earliest[2 * at + 1]);
        }
    }
    // Goes up from both ends, and takes each node whose parent reaches beyond them.
    for (begin += count, end += count; begin < end; begin /= 2, end /= 2) {
        if (begin % 2 == 1) {
            found = earlier(found, m_earliest[begin++]);
        }
        if (end % 2 == 1) {
            found = earlier(found, m_earliest[--end]);
        }
    }
    return found;
}

bool NameIndex::isOneOption(BestMatch const& match) {
    Key& first = m_keys[match.first];
    if (first.next == kNone) {
        return false;
    }
    if (first.askedAfter != m_changes) {
        first.isOneOption = findsNoConflict(first);
        first.askedAfter = m_changes;
    }
    return first.isOneOption;
}

/// Whether no later record has the same names as the record of `first` and a tag of it.
bool NameIndex::findsNoConflict(Key const& first) const {
    OptionDescription const& record = *m_records[first.record];
    // Records with the same names and a common tag are in one chain with the record's first name.
    for (std::string const& tag : record.m_tags) {
        for (std::uint32_t key = findHead(record.firstName(), &tag); key != kNone;
             key = m_keys[key].next) {
            if (m_keys[key].record > first.record &&
                m_records[m_keys[key].record]->m_names == record.m_names) {
                return false;
            }
        }
    }
    return true;
}

std::string NameIndex::listCandidates(BestMatch const& match) const {
    std::vector<Lead> candidates;
    auto const collectChain = [&](std::uint32_t key) {
        for (; key != kNone; key = m_keys[key].next) {
            candidates.push_back({placeOf(m_keys[key]), key});
        }
    };
    if (match.isExact) {
        collectChain(match.first);
    }
    for (std::size_t at = match.begin; at < match.end; ++at) {
        collectChain(m_sorted[at].item);
    }
    internal::sortByLead(candidates, nullptr, nullptr);
    std::string list;
    for (Lead const& candidate : candidates) {
        internal::append(list, {list.empty() ? "'" : ", '", m_keys[candidate.item].text, "'"});
    }
    return list;
}

bool NameIndex::hasTag(Key const& key, std::string const* tag) {
    return key.tag == nullptr || tag == nullptr ? key.tag == tag : *key.tag == *tag;
}

std::uint32_t NameIndex::hashOf(std::string_view text, std::string const* tag) {
    std::uint32_t const hash = internal::TextHash::of(text);
    // Weighted, so that exchanging name and tag changes the hash; an empty tag differs from none.
    return tag == nullptr ? hash : hash * 31 + internal::TextHash::of(*tag) + 1;
}

/// A key's place in the order: by record, then by name, a name before its negation.
std::uint64_t NameIndex::placeOf(Key const& key) {
    return std::uint64_t{key.record} << 32 | key.name << 1 | key.isNegated;
}

/// The head of the chain of a text and a tag, which have this hash.
std::uint32_t NameIndex::findHead(std::string_view text, std::string const* tag,
                                  std::uint32_t hash) const {
    return m_heads.find(hash, [&](std::uint32_t candidate) {
        Key const& key = m_keys[candidate];
        return key.text == text && hasTag(key, tag);
    });
}

/// In how many ways each name of a record can be written.
unsigned NameIndex::spellingsOf(OptionDescription const& record) {
    return record.m_type == mosaic2::vtBool ? 2 : 1;
}

/// A key, without a tag, for a name or its negation.
NameIndex::Key NameIndex::keyOf(OptionDescription const& record, std::size_t name, bool isNegated) {
    Key key{};
    key.text = isNegated ? record.m_names.negation(name) : record.m_names[name];
    key.record = record.m_index;
    key.name = static_cast<std::uint32_t>(name);
    key.isNegated = isNegated ? 1 : 0;
    return key;
}

void NameIndex::insert(Key key) noexcept {
    key.hash = hashOf(key.text, key.tag);
    key.next = kNone;
    std::uint32_t const number =
        m_freeKey != kNone ? m_freeKey : static_cast<std::uint32_t>(m_keys.size());
    key.tail = number;
    if (m_freeKey != kNone) {
        m_freeKey = m_keys[number].next;
        m_keys[number] = key;
    } else {
        internal::emplaceReserved(m_keys, key);
    }
    noteChange();

    std::uint32_t const head = findHead(key.text, key.tag, key.hash);
    if (head == kNone) {
        m_heads.insert(key.hash, number);
    } else {
        link(head, number);
    }
}

/// Puts a key into its place in the chain that begins with `head`.
void NameIndex::link(std::uint32_t head, std::uint32_t number) noexcept {
    Key& key = m_keys[number];
    if (isEarlier(key, m_keys[head])) {
        key.next = head;
        key.tail = m_keys[head].tail;
        m_heads.replace(key.hash, head, number);
        return;
    }
    std::uint32_t before = m_keys[head].tail;
    if (isEarlier(key, m_keys[before])) {
        before = head;
        while (!isEarlier(key, m_keys[m_keys[before].next])) {
            before = m_keys[before].next;
        }
    } else {
        m_keys[head].tail = number;
    }
    key.next = m_keys[before].next;
    m_keys[before].next = number;
}

void NameIndex::remove(Key const& wanted) noexcept {
    std::uint32_t const head = findHead(wanted.text, wanted.tag);
    std::uint32_t const hash = m_keys[head].hash;
    std::uint32_t before = kNone;
    std::uint32_t number = head;
    while (isEarlier(m_keys[number], wanted)) {
        before = number;
        number = m_keys[number].next;
    }
    std::uint32_t const next = m_keys[number].next;
    if (before != kNone) {
        m_keys[before].next = next;
        m_keys[head].tail = next == kNone ? before : m_keys[head].tail;
    } else if (next != kNone) {
        m_keys[next].tail = m_keys[head].tail;
        m_heads.replace(hash, head, next);
    } else {
        m_heads.erase(hash, number);
    }
    m_keys[number].next = m_freeKey;
    m_freeKey = number;
    noteChange();
}

/// What was found out about the names so far may no longer be true.
void NameIndex::noteChange() noexcept {
    m_isSorted = false;
    ++m_changes;
}

void NameIndex::sortHeads() {
    if (m_isSorted) {
        return;
    }
    m_sorted.clear();
    internal::reserveMore(m_sorted, m_keys.size());
    m_earliest.clear();
    m_heads.forEach([this](std::uint32_t number) {
        Key const& key = m_keys[number];
        if (key.tag == nullptr) {
            internal::emplaceReserved(m_sorted, Lead{internal::leadOf(key.text), number});
        }
    });
    internal::sortByLead(m_sorted, [this](std::uint32_t left, std::uint32_t right) {
        return m_keys[left].text < m_keys[right].text;
    });
    m_isSorted = true;
}

}  // namespace varo_3_3
