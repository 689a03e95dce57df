#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "options/garbage.h"
#include "options/option_registry.h"
#include "platform/hash_index.h"
#include "results/item_list.h"
#include "results/result_collector.h"

namespace varo_3_3 {

/// An entry of a result, by the key of its option.
struct GivenOption {
    std::string_view name;  ///< lives as long as the result
    bool isStored;          ///< has an occurrence; false for a default alone
};

/// What one or more parses stored: an entry for each option, and the plain arguments. Entries are
/// only ever added, and are referred to by number, so an iteration survives any later parse.
class ParseResult final : public IParseResult, public IResultCollector {
public:
    /// All that was stored of one option. Texts are held by the result.
    struct Entry {
        std::string_view key;  // ended by a zero
        ItemList items;
        Value defaultValue;
        bool hasDefault = false;
        bool hasValues = false;
        bool isAscending = true;  // the positions; a nested parse stores out of order
        int lastPosition = 0;     // of all that is stored here

        // The record that was last found to lead here, with how many names, and in which parse.
        OptionDescription const* record = nullptr;
        std::size_t names = 0;
        std::uint64_t parse = 0;
    };

    struct Argument {
        char const* text;
        int position;
    };

    ParseResult();
    [[gnu::cold]] ~ParseResult() override;
    ParseResult(ParseResult const&) = delete;
    ParseResult& operator=(ParseResult const&) = delete;

    void destroy() override;
    bool present(char const* name, int from, int to) override;
    Value get(char const* name, int from, int to) override;
    Value next(char const* name) override;
    int nextPosition() override;
    int getFirstArgument(char const** text) override;
    int getNextArgument(char const** text) override;

    /// Tries the option's names in their order: the first that is the key of an entry receives the
    /// occurrence; without one a new entry is made under the primary name.
    void store(OptionDescription const& option, OptionData const& data) override;

    /// Called when a parse into this result begins and when it ends: records seen before may be
    /// gone, and others may have their addresses.
    void forgetRecords() {
        m_parse = m_stamp = newStamp();
        m_met = 0;
    }

    /// Whether every entry belongs to a record that was met since forgetRecords().
    bool allMet() const { return m_met == m_entries.size(); }

    /// Gives every declaration that has a default an entry with that default, found like the entry
    /// that store() uses; an earlier default there is replaced. Throws std::bad_alloc, with the
    /// defaults before that applied. Positions come from takePosition().
    template <class TakePosition>
    void applyDefault(RegisteredOptionStorage const& registry, TakePosition takePosition) {
        // By number, since an earlier default that is destroyed may declare another.
        for (std::size_t at = 0; at < registry.withDefault().size(); ++at) {
            setDefault(*registry.records()[registry.withDefault()[at]], takePosition());
        }
    }

    /// Stores a plain argument.
    void storeArgument(std::string_view text, int position);

    /// The default of the option called `name`; Value() if it has none.
    Value defaultOf(std::string_view name) const;

    /// The position of the first occurrence of `name` from this position on; kNoPosition if there
    /// is none. Unlike a query this moves no iteration.
    int firstOccurrence(std::string_view name, int from) const;

    /// The key of the entry that `name` leads to, if its option was given.
    std::optional<std::string_view> givenKey(std::string_view name) const;

    /// All entries, in no particular order, including those with only a default.
    std::vector<GivenOption> givenOptions() const;

    // All that is stored, in the order in which the entries were made and the arguments came.
    std::vector<Entry> const& entries() const { return m_entries; }
    std::vector<Argument> const& plainArguments() const { return m_arguments; }

private:
    /// A synonym and the entry that it leads to.
    struct Alias {
        std::string_view name;
        std::uint32_t entry;
    };

    /// A number that no other call has returned, for any result.
    static std::uint64_t newStamp();

    void setDefault(OptionDescription const& option, int position);
    std::uint32_t findKey(std::string_view name, std::uint32_t hash) const;
    std::uint32_t findEntry(std::string_view name) const;
    std::uint32_t findAlias(std::string_view name, std::uint32_t hash) const;
    Entry& entryFor(OptionDescription const& option);
    [[gnu::noinline]] std::uint32_t findOrAddEntry(OptionDescription const& option);
    std::uint32_t findEntryOf(OptionDescription const& option, std::uint32_t hash) const;
    void meet(OptionDescription const& option, std::uint32_t number);
    void addAliases(OptionDescription const& option, std::string_view key, std::uint32_t entry);
    void indexAliases() const;
    std::string_view keep(std::string_view text);

    Entry* select(char const* name, int from, int to);
    static bool isDefaultAlone(Entry const& entry);
    static std::size_t findItem(Entry const& entry, int from, int to);
    bool skipToNext(Entry const& entry);

    std::vector<Entry> m_entries;
    internal::HashIndex m_keys;

    // A record remembers its entry, with the stamp that the result had then. That saves the search
    // by name, 20 % of an argument; whatever can lead a record to another entry changes the stamp.
    std::uint64_t m_stamp = newStamp();
    std::uint64_t m_parse = m_stamp;  // the stamp with which this parse began
    std::size_t m_met = 0;            // entries that records of this parse lead to

    std::vector<Alias> m_aliases;
    mutable internal::HashIndex m_aliasIndex;  // of the first m_indexed aliases: few ask by alias
    mutable std::size_t m_indexed = 0;

    std::vector<Argument> m_arguments;
    std::size_t m_nextArgument = 0;

    // The iteration of next(): an entry, how far it has come, and its range.
    std::uint32_t m_selected = internal::HashIndex::kNone;
    std::size_t m_nextItem = 0;
    int m_from = 0;
    int m_to = 0;

    char m_firstTexts[256];  // enough for an ordinary parse
    Garbage m_texts{m_firstTexts, sizeof(m_firstTexts)};
    std::vector<Value> m_earlierDefaults;  // whose texts the host may still hold
};

}  // namespace varo_3_3
