#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "options/garbage.h"
#include "options/name_list.h"
#include "options/value_index.h"
#include "varo/option.h"

namespace varo_3_3 {

class RegisteredOptionStorage;

/// One declaration: a plain option, an action or a modifier. Created and owned by the registry; the
/// host refines it through IOption, and recognizers, results and help read its members. A record
/// never moves, so pointers to it hold as long as the registry keeps it.
class OptionDescription final : public IOption {
public:
    enum Kind : std::int32_t { kAction = 0, kOption = 1 };
    using DeprecatedValues = std::map<mosaic2::variant_t, mosaic2::variant_t, ByKind>;

    OptionDescription() = default;
    [[gnu::cold]] ~OptionDescription() override;
    OptionDescription(OptionDescription const&) = delete;
    OptionDescription& operator=(OptionDescription const&) = delete;
    OptionDescription& operator=(OptionDescription&&) noexcept;

    IOption* synonym(char const* name) override;
    IOption* allowValue(mosaic2::variant_t const& value) override;
    [[gnu::cold]] IOption* allowDeprecatedValue(mosaic2::variant_t const& deprecated,
                                                mosaic2::variant_t const& replacement) override;
    IOption* defaultValue(mosaic2::variant_t const& value) override;
    IOption* tokenize(char separator) override;
    IOption* positional() override;
    [[gnu::cold]] IOption* tag(char const* tags) override;

    bool isAction() const { return m_kind == kAction; }

    /// Whether it has values, rather than being there or not.
    bool hasValues() const { return m_type != mosaic2::vtNull && m_type != mosaic2::vtBool; }

    /// Whether only the hidden help shows it.
    bool isHidden() const { return m_section == "varo_hidden"; }

    /// The primary name, ended by a zero; "" for a record without names.
    std::string_view firstName() const { return m_names.first(); }

    /// Whether every text is accepted as a value and stored as typed.
    bool acceptsAnyText() const {
        return m_type == mosaic2::vtString && m_allowedValues.empty() && m_deprecatedValues.empty();
    }

    /// Whether `value` equals one of the allowed values.
    bool isAllowed(mosaic2::variant_t const& value) const;

    /// The name of the type in help and messages; "" for one without conversion.
    char const* getTypeName() const;

    /// The text of `value`, held by `holder`.
    char const* toString(Garbage* holder, mosaic2::variant_t const& value) const;

    /// Converts `text`, replaces a deprecated value, and checks the result against the allowed
    /// values. True when accepted: `message` is then empty or a warning. False: `message` is the
    /// reason and `value` is unspecified.
    bool validate(std::string_view text, mosaic2::variant_t& value, std::string& message) const;

    /// The order of help: by primary names, byte by byte.
    bool operator<(OptionDescription const& other) const { return firstName() < other.firstName(); }

    // The members and their order are fixed up to m_textHolder, which keeps the texts that the
    // views show, each ended by a zero.
    std::int32_t m_state = 0;  ///< 3 on the placeholder for refused declarations; nothing reads it
    NameList m_names;
    std::set<std::string> m_tags;  ///< an action's own names, or the actions of a modifier
    std::string_view m_section = "";
    std::string_view m_actions = "";  ///< those of a modifier as declared; nothing reads it
    std::string_view m_description = "";
    bool m_isPositional = false;
    bool m_hasDefault = false;
    Kind m_kind = kOption;
    char m_tokenizer = 0;  ///< 0 for none
    mosaic2::das_variant_type_t m_type = mosaic2::vtNull;
    mosaic2::variant_t m_defaultValue;
    std::vector<mosaic2::variant_t> m_allowedValues;
    DeprecatedValues m_deprecatedValues;  ///< each with its replacement
    Garbage* m_textHolder = nullptr;

    /// The registry that has this record among its declarations, at m_index; null for the
    /// placeholder and for a record that was replaced, so that refining those reaches nothing.
    RegisteredOptionStorage* m_owner = nullptr;
    std::uint32_t m_index = 0;

    /// The entry that a result keeps for this record, while the result has this stamp.
    mutable std::uint32_t m_entry = 0;
    mutable std::uint64_t m_stamp = 0;

    OptionDescription* m_nextFree = nullptr;  ///< in the pool, while this is not in use

private:
    DeprecatedValues::const_iterator findDeprecated(mosaic2::variant_t const& value) const;
    [[gnu::cold]] bool replaceDeprecated(std::string_view text, mosaic2::variant_t& value,
                                         std::string& message) const;
    ValueIndex const& allowedIndex() const;
    [[gnu::cold]] bool refuseText(std::string_view text, std::string& message) const;
    bool complete(std::string_view text, mosaic2::variant_t& value, std::string& message) const;
    [[gnu::cold]] bool refuseValue(std::string_view text, bool isAmbiguous,
                                   std::string& message) const;

    mutable std::unique_ptr<ValueIndex> m_allowedIndex;  // made when it is first needed
};

/// The declarations, in the order they were made.
using OptionRecords = std::vector<OptionDescription*>;

}  // namespace varo_3_3
