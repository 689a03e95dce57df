#pragma once

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "options/garbage.h"
#include "options/name_index.h"
#include "options/option_description.h"
#include "options/record_pool.h"
#include "options/refusals.h"

namespace varo_3_3 {

/// Every declaration of one parser, the index of their names, and the help sections. A member of
/// the parser. A declaration either takes effect as a whole or not at all.
class RegisteredOptionStorage {
public:
    /// Sections as (name, text), in the order they first appeared. The texts are held as those of
    /// the records are.
    using Sections = std::vector<std::pair<std::string_view, std::string_view>>;

    /// `textHolder` is passed on to the records and must outlive them.
    explicit RegisteredOptionStorage(Garbage* textHolder);
    RegisteredOptionStorage(RegisteredOptionStorage const&) = delete;
    RegisteredOptionStorage& operator=(RegisteredOptionStorage const&) = delete;

    /// Declares an option, action or modifier, as IParser describes. `actions` may be null. Returns
    /// the record or, when it is refused or memory runs out, the placeholder.
    virtual IOption* option(char const* names, char const* actions, char const* description,
                            bool isAction, mosaic2::das_variant_type_t type, char const* section);
    virtual IOption* action(char const* names, char const* description,
                            mosaic2::das_variant_type_t type, char const* section);
    virtual IOption* modifier(char const* names, char const* actions, char const* description,
                              mosaic2::das_variant_type_t type, char const* section);

    void setDefaultTokenizer(char tokenizer) { m_defaultTokenizer = tokenizer; }
    void setReplace(bool replace) { m_replace = replace; }

    OptionRecords const& records() const { return m_records; }
    NameIndex& names() { return m_names; }
    NameIndex const& names() const { return m_names; }
    Sections const& sections() const { return m_sections; }
    Refusals const& refusals() const { return m_refusals; }
    bool isPlaceholder(IOption const* option) const { return option == &m_placeholder; }

    /// The first declaration that takes `name`, with one of `tags` unless those are empty; null if
    /// there is none.
    OptionDescription const* find(std::string_view name, std::set<std::string> const& tags) const {
        std::uint32_t const number = m_names.findRecord(name, tags);
        return number != NameIndex::kNone ? m_records[number] : nullptr;
    }

    /// The number of the section with this name. Requires: a declaration has named it.
    std::uint32_t sectionNumber(std::string_view name) const;

    std::size_t actionCount() const { return m_actionCount; }

    /// The number of the first positional declaration, NameIndex::kNone if there is none.
    std::uint32_t firstPositional() const { return m_firstPositional; }

    /// The numbers of the declarations that have a default, ascending.
    std::vector<std::uint32_t> const& withDefault() const { return m_withDefault; }

    /// While there is at least one user, replaced records stay alive.
    void beginUse() { ++m_users; }
    void endUse() noexcept;

    /// Whether a record was replaced since beginUse().
    bool hasRetired() const { return !m_retired.empty(); }

    // A record that was declared here reports its refinements. The first three may throw
    // std::bad_alloc, with nothing changed.

    /// The last name of `record` is new.
    void onNameAdded(OptionDescription const& record);
    /// `tags`, whose elements will be moved into it, are new to `record`.
    void onTagsAdded(OptionDescription const& record, std::set<std::string> const& tags);
    /// `record` is about to get a default.
    void onDefaultSet(OptionDescription const& record);
    void onPositionalSet(OptionDescription const& record) noexcept;

private:
    struct GivenNames;
    struct SectionChange;

    /// The place of a record that was replaced while in use, and what its contents go to after
    /// that.
    struct Retired {
        OptionDescription* place;
        std::unique_ptr<OptionDescription> contents;
    };

    IOption* declare(char const* names, char const* actions, char const* description, bool isAction,
                     mosaic2::das_variant_type_t type, char const* section);
    [[gnu::cold]] IOption* refuse(char const* names, Refusals::Reason reason,
                                  std::uint32_t holder = 0) noexcept;
    IOption* placeholder() noexcept;
    SectionChange prepareSection(std::string_view section);
    [[gnu::noinline]] std::string_view commit(SectionChange const& change) noexcept;
    std::string_view keep(std::string_view text);
    std::uint32_t findOption(GivenNames const& names, std::set<std::string> const& tags) const;
    IOption* append(OptionDescription& record) noexcept;
    [[gnu::cold]] IOption* replace(unsigned long index, OptionDescription& record,
                                   std::unique_ptr<OptionDescription> aside) noexcept;

    char m_defaultTokenizer = ',';
    RecordPool m_pool;
    OptionRecords m_records;
    Sections m_sections;
    OptionDescription m_placeholder;
    bool m_replace = false;

    Garbage* m_textHolder;
    NameIndex m_names;
    internal::HashIndex m_sectionIndex;
    std::uint32_t m_lastSection = 0;  // the one that the last declaration named
    std::vector<std::uint32_t> m_withDefault;
    std::uint32_t m_firstPositional = NameIndex::kNone;
    std::size_t m_actionCount = 0;
    std::size_t m_users = 0;
    std::vector<Retired> m_retired;
    Refusals m_refusals;
};

}  // namespace varo_3_3
