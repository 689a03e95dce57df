#include "options/option_description.h"

#include <algorithm>

#include "options/option_registry.h"
#include "options/split_list.h"
#include "options/value_text.h"
#include "platform/join.h"

namespace varo_3_3 {

namespace {

std::string textOf(mosaic2::variant_t const& value) {
    std::string text;
    appendText(text, value);
    return text;
}

}  // namespace

OptionDescription::~OptionDescription() = default;
OptionDescription& OptionDescription::operator=(OptionDescription&&) noexcept = default;

IOption* OptionDescription::synonym(char const* name) {
    if (name == nullptr) {
        return this;
    }
    m_names.add(name, *m_textHolder);
    m_stamp = 0;  // the name may lead to another entry
    if (m_owner != nullptr) {
        try {
            m_owner->onNameAdded(*this);
        } catch (...) {
            m_names.removeLast();
            throw;
        }
    }
    return this;
}

IOption* OptionDescription::allowValue(mosaic2::variant_t const& value) {
    m_allowedIndex.reset();
    m_allowedValues.push_back(value);
    return this;
}

IOption* OptionDescription::allowDeprecatedValue(mosaic2::variant_t const& deprecated,
                                                 mosaic2::variant_t const& replacement) {
    if (findDeprecated(deprecated) == m_deprecatedValues.end()) {
        m_deprecatedValues.emplace(deprecated, replacement);
    }
    return this;
}

IOption* OptionDescription::defaultValue(mosaic2::variant_t const& value) {
    if (m_owner != nullptr) {
        m_owner->onDefaultSet(*this);
    }
    m_defaultValue = value;
    m_hasDefault = true;
    return this;
}

IOption* OptionDescription::tokenize(char separator) {
    m_tokenizer = separator;
    return this;
}

IOption* OptionDescription::positional() {
    m_isPositional = true;
    if (m_owner != nullptr) {
        m_owner->onPositionalSet(*this);
    }
    return this;
}

IOption* OptionDescription::tag(char const* tags) {
    if (tags == nullptr) {
        return this;
    }
    std::set<std::string> added;
    internal::splitList(tags, [&](std::string_view tag) {
        std::string text(tag);
        if (!m_tags.contains(text)) {
            added.insert(std::move(text));
        }
    });
    if (m_owner != nullptr) {
        m_owner->onTagsAdded(*this, added);
    }
    m_tags.merge(added);
    return this;
}

char const* OptionDescription::getTypeName() const {
    return typeName(m_type);
}

char const* OptionDescription::toString(Garbage* holder, mosaic2::variant_t const& value) const {
    return holder->init(textOf(value));
}

bool OptionDescription::validate(std::string_view text, mosaic2::variant_t& value,
                                 std::string& message) const {
    message.clear();
    fromString(text, m_type, value);
    if (value.m_type == mosaic2::vtNull && hasConversion(m_type)) {
        return refuseText(text, message);
    }
    if (!m_deprecatedValues.empty() && replaceDeprecated(text, value, message)) {
        return true;
    }
    return m_allowedValues.empty() || isAllowed(value) || complete(text, value, message);
}

bool OptionDescription::refuseText(std::string_view text, std::string& message) const {
    message = internal::join({"Option '", firstName(), "' can not parse '", text,
                              "' value, requires a type '", getTypeName(), "' here."});
    return false;
}

OptionDescription::DeprecatedValues::const_iterator OptionDescription::findDeprecated(
    mosaic2::variant_t const& value) const {
    auto found = m_deprecatedValues.find(value);
    if (found == m_deprecatedValues.end()) {
        found = m_deprecatedValues.find(asOtherNumber(value));
    }
    bool const isFound = found != m_deprecatedValues.end() && found->first == value;
    return isFound ? found : m_deprecatedValues.end();
}

bool OptionDescription::replaceDeprecated(std::string_view text, mosaic2::variant_t& value,
                                          std::string& message) const {
    auto const deprecated = findDeprecated(value);
    if (deprecated == m_deprecatedValues.end()) {
        return false;
    }
    value = deprecated->second;
    message = internal::join({"Warning: '", text, "' argument is deprecated for the option '-",
                              firstName(), "'. Use the '", textOf(value), "' argument instead."});
    return true;
}

ValueIndex const& OptionDescription::allowedIndex() const {
    if (m_allowedIndex == nullptr) {
        m_allowedIndex = std::make_unique<ValueIndex>(m_allowedValues);
    }
    return *m_allowedIndex;
}

bool OptionDescription::isAllowed(mosaic2::variant_t const& value) const {
    constexpr std::size_t kFew = 8;  // faster to compare than to make an index of
    return m_allowedValues.size() <= kFew
               ? std::find(m_allowedValues.begin(), m_allowedValues.end(), value) !=
                     m_allowedValues.end()
               : allowedIndex().contains(value);
}

/// Replaces an abbreviated text with the allowed value that it begins, or says why it cannot. The
/// value is stored as a string of its own: a borrowed one may be gone before the result is.
bool OptionDescription::complete(std::string_view text, mosaic2::variant_t& value,
                                 std::string& message) const {
    ValueIndex::Completion completion;
    if (m_type == mosaic2::vtString && !text.empty()) {
        completion = allowedIndex().complete(text);
    }
    if (completion.value == nullptr || !completion.isUnique) {
        return refuseValue(text, completion.value != nullptr, message);
    }
    value = mosaic2::variant_t(completion.value->get<char const*>());
    return true;
}

/// Lists what is allowed or, for an ambiguous text, what begins with it.
bool OptionDescription::refuseValue(std::string_view text, bool isAmbiguous,
                                    std::string& message) const {
    message = isAmbiguous
                  ? internal::join({"Ambiguous value for option '", firstName()})
                  : internal::join({"Option '", firstName(), "' does not allow value '", text});
    char const* separator = "'. Possible values follows: '";
    for (mosaic2::variant_t const& allowed : m_allowedValues) {
        std::string const possible = textOf(allowed);
        if (!isAmbiguous || (allowed.can_get<char const*>() && possible.starts_with(text))) {
            internal::append(message, {separator, possible, "'"});
            separator = ", '";
        }
    }
    return false;
}

}  // namespace varo_3_3
