#include "options/name_index.h"

#include <algorithm>

#include "options/tag_sets.h"
#include "platform/join.h"
#include "platform/reserve_more.h"
#include "platform/text_lead.h"

namespace varo_3_3 {
namespace {

constexpr std::string_view kNegation = "no-";

}  // namespace

void NameIndex::reserveMore(OptionDescription const& record, std::size_t names, std::size_t tags) {
    std::size_t const spellings = record.m_type == mosaic2::vtBool ? 2 : 1;
    std::size_t const keys = names * spellings * (1 + tags);
    internal::reserveMore(m_keys, keys, 32);  // a small tool's names, in one allocation
    m_heads.reserveMore(keys);
}

void NameIndex::addRecord(OptionDescription const& record) noexcept {
    for (std::size_t name = 0; name < record.m_names.size(); ++name) {
        addName(record, name);
    }
}

void NameIndex::addName(OptionDescription const& record, std::size_t name) noexcept {
    forEachSpelling(record, name, [&](Key key) {
        insert(key);
        for (std::string const& tag : record.m_tags) {
            key.tag = &tag;
            insert(key);
        }
    });
}

void NameIndex::addTag(OptionDescription const& record, std::string const& tag) noexcept {
    for (std::size_t name = 0; name < record.m_names.size(); ++name) {
        forEachSpelling(record, name, [&](Key key) {
            key.tag = &tag;
            insert(key);
        });
    }
}

void NameIndex::removeRecord(OptionDescription const& record) noexcept {
    for (std::size_t name = 0; name < record.m_names.size(); ++name) {
        forEachSpelling(record, name, [&](Key key) {
            remove(key);
            for (std::string const& tag : record.m_tags) {
                key.tag = &tag;
                remove(key);
            }
        });
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

NameIndex::BestMatch NameIndex::find_best_match(std::string_view typed) {
    BestMatch match;
    if (typed.empty()) {
        return match;
    }
    match.first = findHead(typed, nullptr);
    if (match.first != kNone) {
        match.isExact = true;
        match.isUnique = m_keys[match.first].next == kNone;
        return match;
    }
    sortHeads();
    std::uint64_t const lead = internal::leadOf({}, typed);
    auto const begin =
        std::partition_point(m_sorted.begin(), m_sorted.end(), [&](SortedKey const& sorted) {
            return sorted.lead != lead ? sorted.lead < lead
                                       : compare(m_keys[sorted.key], typed) < 0;
        });
    auto const fits = [&](SortedKey const& sorted) {
        return startsWith(m_keys[sorted.key], typed);
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
    match.first = earliestOf(match.begin, match.end);
    match.isUnique = end - begin == 1 && m_keys[match.first].next == kNone;
    return match;
}

/// The earliest key among those of a range of the sorted array. A tree over the array answers for
/// wide ranges, such as an abbreviation of a thousand names has: its leaves are the keys, every
/// other node is the earlier of its two children.
std::uint32_t NameIndex::earliestOf(std::size_t begin, std::size_t end) {
    constexpr std::size_t kNarrow = 32;  // is looked through faster than the tree
    auto const earlier = [this](std::uint32_t left, std::uint32_t right) {
        return isEarlier(m_keys[left], m_keys[right]) ? left : right;
    };
    std::uint32_t found = m_sorted[begin].key;
    if (end - begin <= kNarrow) {
        for (std::size_t at = begin + 1; at < end; ++at) {
            found = earlier(found, m_sorted[at].key);
        }
        return found;
    }
    std::size_t const count = m_sorted.size();
    if (m_earliest.empty()) {
        m_earliest.resize(2 * count);
        for (std::size_t at = 0; at < count; ++at) {
            m_earliest[count + at] = m_sorted[at].key;
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

std::string NameIndex::textOf(std::uint32_t key) const {
    return internal::join({prefixOf(m_keys[key]), nameOf(m_keys[key])});
}

bool NameIndex::beginsWithNo(std::uint32_t key) const {
    return startsWith(m_keys[key], kNegation);
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
    std::vector<std::uint32_t> candidates;
    auto const collectChain = [&](std::uint32_t key) {
        for (; key != kNone; key = m_keys[key].next) {
            candidates.push_back(key);
        }
    };
    if (match.isExact) {
        collectChain(match.first);
    }
    for (std::size_t at = match.begin; at < match.end; ++at) {
        collectChain(m_sorted[at].key);
    }
    std::sort(candidates.begin(), candidates.end(), [&](std::uint32_t left, std::uint32_t right) {
        return isEarlier(m_keys[left], m_keys[right]);
    });
    std::string list;
    for (std::uint32_t const key : candidates) {
        list += list.empty() ? "'" : ", '";
        list += prefixOf(m_keys[key]);
        list += nameOf(m_keys[key]);
        list += '\'';
    }
    return list;
}

std::string_view NameIndex::prefixOf(Key const& key) {
    return key.isNegated ? kNegation : std::string_view();
}

bool NameIndex::hasTag(Key const& key, std::string const* tag) {
    return key.tag == nullptr || tag == nullptr ? key.tag == tag : *key.tag == *tag;
}

std::uint32_t NameIndex::hashOf(std::string_view prefix, std::string_view name,
                                std::string const* tag) {
    std::uint32_t const hash =
        prefix.empty() ? internal::TextHash::of(name) : internal::TextHash::of(prefix, name);
    // Weighted, so that a name and a tag may not change places; an empty tag is not the same as
    // none.
    return tag == nullptr ? hash : hash * 31 + internal::TextHash::of(*tag) + 1;
}

/// How the text of `key` sorts to `text`: negative, zero or positive.
int NameIndex::compare(Key const& key, std::string_view text) const {
    if (key.isNegated) {
        int const order = kNegation.compare(text.substr(0, kNegation.size()));
        if (order != 0) {
            return order;
        }
        text.remove_prefix(kNegation.size());
    }
    return nameOf(key).compare(text);
}

bool NameIndex::startsWith(Key const& key, std::string_view text) const {
    if (key.isNegated) {
        std::size_t const common = std::min(text.size(), kNegation.size());
        if (kNegation.substr(0, common) != text.substr(0, common)) {
            return false;
        }
        text.remove_prefix(common);
    }
    return nameOf(key).starts_with(text);
}

bool NameIndex::isBefore(SortedKey const& left, SortedKey const& right) const {
    if (left.lead != right.lead) {
        return left.lead < right.lead;
    }
    Key const& leftKey = m_keys[left.key];
    Key const& rightKey = m_keys[right.key];
    if (leftKey.isNegated && rightKey.isNegated) {
        return nameOf(leftKey) < nameOf(rightKey);
    }
    return rightKey.isNegated ? compare(rightKey, nameOf(leftKey)) > 0
                              : compare(leftKey, nameOf(rightKey)) < 0;
}

/// The order of candidates: by record, then by name, a name before its negation.
bool NameIndex::isEarlier(Key const& left, Key const& right) {
    auto const order = [](Key const& key) {
        return std::uint64_t{key.record} << 32 | key.name << 1 | key.isNegated;
    };
    return order(left) < order(right);
}

std::uint32_t NameIndex::findHead(std::string_view text, std::string const* tag) const {
    return m_heads.find(hashOf({}, text, tag), [&](std::uint32_t candidate) {
        return hasTag(m_keys[candidate], tag) && compare(m_keys[candidate], text) == 0;
    });
}

/// The head of the chain that `wanted`, whose hash is known, is or will be in.
std::uint32_t NameIndex::findHead(Key const& wanted) const {
    return m_heads.find(wanted.hash, [&](std::uint32_t candidate) {
        Key const& key = m_keys[candidate];
        bool const hasSameText = key.isNegated == wanted.isNegated ? nameOf(key) == nameOf(wanted)
                                 : key.isNegated ? compare(key, nameOf(wanted)) == 0
                                                 : compare(wanted, nameOf(key)) == 0;
        return hasSameText && hasTag(key, wanted.tag);
    });
}

/// Calls `take` with a key, without a tag, for the name and for its negation if it has one.
template <class Take>
void NameIndex::forEachSpelling(OptionDescription const& record, std::size_t name,
                                Take take) const {
    Key key{record.m_index, static_cast<std::uint32_t>(name), 0, nullptr, kNone, kNone, 0, 0, 0};
    take(key);
    if (record.m_type == mosaic2::vtBool) {
        key.isNegated = 1;
        take(key);
    }
}

void NameIndex::insert(Key key) noexcept {
    key.hash = hashOf(prefixOf(key), nameOf(key), key.tag);
    std::uint32_t number = m_freeKey;
    if (number != kNone) {
        m_freeKey = m_keys[number].next;
    } else {
        number = static_cast<std::uint32_t>(m_keys.size());
        m_keys.push_back(key);
    }
    key.tail = number;
    m_keys[number] = key;
    noteChange();

    std::uint32_t const head = findHead(key);
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

void NameIndex::remove(Key wanted) noexcept {
    wanted.hash = hashOf(prefixOf(wanted), nameOf(wanted), wanted.tag);
    std::uint32_t const head = findHead(wanted);
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
        m_heads.replace(wanted.hash, head, next);
    } else {
        m_heads.erase(wanted.hash, number);
    }
    m_keys[number].next = m_freeKey;
    m_freeKey = number;
    noteChange();
}

/// What was found out about the names so far is not certain any more.
void NameIndex::noteChange() noexcept {
    m_isSorted = false;
    ++m_changes;
}

void NameIndex::sortHeads() {
    if (m_isSorted) {
        return;
    }
    m_sorted.clear();
    m_earliest.clear();
    m_heads.forEach([this](std::uint32_t number) {
        Key const& key = m_keys[number];
        if (key.tag == nullptr) {
            m_sorted.push_back({internal::leadOf(prefixOf(key), nameOf(key)), number});
        }
    });
    std::sort(
        m_sorted.begin(), m_sorted.end(),
        [this](SortedKey const& left, SortedKey const& right) { return isBefore(left, right); });
    m_isSorted = true;
}

bool findOption(std::string_view name, unsigned long& index, NameIndex const& options,
                std::set<std::string> const& actions) {
    std::uint32_t const record = options.findRecord(name, actions);
    if (record == NameIndex::kNone) {
        return true;
    }
    index = record;
    return false;
}

bool findOption(std::vector<std::string> const& names, unsigned long& index,
                NameIndex const& options, std::set<std::string> const& actions) {
    return std::all_of(names.begin(), names.end(), [&](std::string const& name) {
        return findOption(name, index, options, actions);
    });
}

}  // namespace varo_3_3
