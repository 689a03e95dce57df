#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "options/option_description.h"
#include "platform/hash_index.h"
#include "platform/lead_sort.h"

namespace varo_3_3 {

/// Finds declarations by name without looking at each of them.
///
/// Every name is inserted under its text and, for a record with tags, once more under its text with
/// each tag; a boolean's names are also inserted with "no-" before them. Keys with the same text
/// and tag form a chain in declaration order, whose head is in a hash table. Heads without a tag
/// are also in an array sorted by text, for abbreviations.
///
/// It stays correct when declarations change: keys refer to records by number, and to texts that
/// the parser keeps. The registry inserts a record when it is declared, removes it when it is
/// replaced, and passes on every name or tag that a record gets later. Each such change drops the
/// sorted array; the next abbreviation builds it again.
class NameIndex {
public:
    static constexpr std::uint32_t kNone = internal::HashIndex::kNone;

    /// What a typed name can mean: nothing, one candidate, or several.
    struct BestMatch {
        std::uint32_t first = kNone;  ///< the key of the first candidate in the order of the list
        bool isUnique = false;
        bool isExact = false;   ///< the candidates are the chain of `first`
        std::size_t begin = 0;  ///< else the chains of this range of the sorted array
        std::size_t end = 0;
    };

    explicit NameIndex(OptionRecords const& records) : m_records(records) {}

    /// Makes room for `names` more names of `record` with `tags` tags. May throw std::bad_alloc.
    void reserveMore(OptionDescription const& record, std::size_t names, std::size_t tags);

    // These require that room, and that the record is in its place in the list.
    void addRecord(OptionDescription const& record) noexcept;
    void addName(OptionDescription const& record, std::size_t name) noexcept;
    void addTag(OptionDescription const& record, std::string const& tag) noexcept;

    /// Removes every key of `record`, which must still be in its place in the list.
    [[gnu::cold]] void removeRecord(OptionDescription const& record) noexcept;

    /// The number of the first record that takes `name`, with one of `tags` unless those are empty;
    /// kNone if there is none.
    std::uint32_t findRecord(std::string_view name, std::set<std::string> const& tags) const;

    /// Calls `visit(record)` for the records that have `name` itself among their names, in order,
    /// until it returns true; returns whether it did.
    template <class Visit>
    bool anyRecordNamed(std::string_view name, Visit visit) const {
        for (std::uint32_t key = findHead(name, nullptr); key != kNone; key = m_keys[key].next) {
            if (!m_keys[key].isNegated && visit(*m_records[m_keys[key].record])) {
                return true;
            }
        }
        return false;
    }

    /// The candidates for a typed name: the keys of equal text, or else all that begin with it. An
    /// empty name has none. May throw std::bad_alloc.
    BestMatch find_best_match(std::string_view typed) {
        return find_best_match(typed, findExact(typed));
    }

    /// The same when `exact`, the answer of findExact(), is known.
    BestMatch find_best_match(std::string_view typed, std::uint32_t exact);

    /// The key that a typed name means to a parse; kNone for none and for several. May throw
    /// std::bad_alloc.
    std::uint32_t findMeant(std::string_view typed) {
        BestMatch const match = find_best_match(typed);
        bool const isMeant = match.isUnique || (match.first != kNone && isOneOption(match));
        return isMeant ? match.first : kNone;
    }

    /// The first key with exactly this text, kNone if there is none; and whether it is the only
    /// one. These two usually decide what an argument means.
    std::uint32_t findExact(std::string_view typed) const {
        return typed.empty() ? kNone : findHead(typed, nullptr);
    }
    bool isAlone(std::uint32_t key) const { return m_keys[key].next == kNone; }

    std::uint32_t recordOf(std::uint32_t key) const { return m_keys[key].record; }
    std::string_view textOf(std::uint32_t key) const { return m_keys[key].text; }
    bool beginsWithNo(std::uint32_t key) const {
        return m_keys[key].text.starts_with(NameList::kNegation);
    }
    bool isNegated(std::uint32_t key) const { return m_keys[key].isNegated != 0; }

    /// Whether several candidates are only one option, declared for different actions: the text of
    /// the first is a candidate twice, and no later record with the same names shares a tag with
    /// it.
    bool isOneOption(BestMatch const& match);

    /// The texts of all candidates, in the order of the list: 'a', 'b'.
    [[gnu::cold]] std::string listCandidates(BestMatch const& match) const;

private:
    struct Key {
        std::string_view text;
        std::uint32_t record;
        std::uint32_t name : 31;
        std::uint32_t isNegated : 1;  // the text is "no-" and the name
        std::string const* tag;       // null: without a tag
        std::uint32_t next;           // in the chain
        std::uint32_t tail;           // of the chain; kept in its head
        std::uint32_t hash;
        // The answer of isOneOption, and after which change it was given. Without it, every
        // argument would walk over all tags of the record.
        std::uint32_t askedAfter : 31;
        std::uint32_t isOneOption : 1;
    };

    static std::uint32_t hashOf(std::string_view text, std::string const* tag);
    static std::uint64_t placeOf(Key const& key);
    static bool isEarlier(Key const& left, Key const& right) {
        return placeOf(left) < placeOf(right);
    }
    static bool hasTag(Key const& key, std::string const* tag);
    std::uint32_t findHead(std::string_view text, std::string const* tag) const {
        return findHead(text, tag, hashOf(text, tag));
    }
    std::uint32_t findHead(std::string_view text, std::string const* tag, std::uint32_t hash) const;
    static unsigned spellingsOf(OptionDescription const& record);
    static Key keyOf(OptionDescription const& record, std::size_t name, bool isNegated);
    void insert(Key key) noexcept;
    [[gnu::noinline]] void link(std::uint32_t head, std::uint32_t number) noexcept;
    [[gnu::cold]] void remove(Key const& wanted) noexcept;
    void noteChange() noexcept;
    [[gnu::noinline]] void sortHeads();
    [[gnu::noinline]] std::uint32_t earliestOf(std::size_t begin, std::size_t end);
    bool findsNoConflict(Key const& first) const;

    OptionRecords const& m_records;
    std::vector<Key> m_keys;
    std::uint32_t m_freeKey = kNone;  // chain of the removed keys
    internal::HashIndex m_heads;
    std::vector<internal::Lead> m_sorted;   // keys, with the beginnings of their texts
    std::vector<std::uint32_t> m_earliest;  // see earliestOf; empty until it is needed
    bool m_isSorted = false;
    std::uint32_t m_changes : 31 = 0;
};

}  // namespace varo_3_3
