#include "values.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>

#include "names.h"

namespace clidiff {
namespace {

bool isText(TypedValue const& value) {
    return value.type == "string";
}

/// Which texts a string option accepts, and as what. Values of other types never match a text.
class Texts {
public:
    explicit Texts(Declaration const& declaration) : m_acceptsAny(declaration.allowed.empty()) {
        for (TypedValue const& value : declaration.allowed) {
            if (isText(value)) {
                m_allowed.push_back(value.text);
            }
        }
        sortUnique(m_allowed);
        for (auto const& [value, replacement] : declaration.deprecated) {
            if (isText(value)) {
                m_deprecated.emplace(value.text, &replacement);
            }
        }
    }

    bool acceptsAny() const { return m_acceptsAny; }

    std::optional<TypedValue> take(std::string_view text) const {
        auto const deprecated = m_deprecated.find(text);
        if (deprecated != m_deprecated.end()) {
            return *deprecated->second;
        }
        if (m_acceptsAny) {
            return TypedValue{"string", std::string(text)};
        }
        auto const found = std::lower_bound(m_allowed.begin(), m_allowed.end(), text);
        if (found == m_allowed.end() || !found->starts_with(text)) {
            return std::nullopt;
        }
        bool const isUnique = found->size() == text.size() || found + 1 == m_allowed.end() ||
                              !found[1].starts_with(text);
        return isUnique ? std::optional(TypedValue{"string", std::string(*found)}) : std::nullopt;
    }

    void appendTo(std::vector<std::string_view>& texts) const {
        texts.insert(texts.end(), m_allowed.begin(), m_allowed.end());
        for (auto const& [text, replacement] : m_deprecated) {
            texts.push_back(text);
        }
    }

private:
    bool m_acceptsAny;
    std::vector<std::string_view> m_allowed;
    std::map<std::string_view, TypedValue const*> m_deprecated;
};

std::string inQuotes(std::string_view text) {
    return "'" + std::string(text) + "'";
}

std::vector<std::string> brokenTexts(Declaration const& older, Declaration const& newer) {
    std::vector<std::string> broken;
    Texts const before(older);
    Texts const after(newer);
    if (before.acceptsAny() && !after.acceptsAny()) {
        broken.push_back("only listed values are allowed");
    }
    std::vector<std::string_view> texts;
    before.appendTo(texts);
    after.appendTo(texts);
    sortUnique(texts);
    std::vector<std::string_view> const tried =
        before.acceptsAny() ? texts : tellingBeginnings(texts);
    std::string_view lastShort;
    for (std::string_view const text : tried) {
        std::optional<TypedValue> const meant = before.take(text);
        std::optional<TypedValue> const means = after.take(text);
        if (!meant || meant == means || (!means && before.acceptsAny())) {
            continue;
        }
        bool const isShort = meant->text.size() > text.size() && meant->text.starts_with(text);
        bool const isToldAnyway = isShort && (before.take(meant->text) != after.take(meant->text) ||
                                              (!lastShort.empty() && text.starts_with(lastShort)));
        if (isToldAnyway) {
            continue;
        }
        lastShort = isShort ? text : lastShort;
        broken.push_back("value " + inQuotes(text) +
                         (isShort ? ", short for " + inQuotes(meant->text) + "," : "") +
                         (means ? " now means " + inQuotes(means->text) : " is refused"));
    }
    return broken;
}

/// A set of values in which the two zeros of a double are one, as they are to the parser.
class Numbers {
public:
    explicit Numbers(std::vector<TypedValue> const& values) {
        for (TypedValue const& value : values) {
            m_values.insert(withOneZero(value));
        }
    }

    bool contains(TypedValue const& value) const { return m_values.contains(withOneZero(value)); }

private:
    static TypedValue withOneZero(TypedValue value) {
        value.text = value.text == "-0" ? "0" : value.text;
        return value;
    }

    std::set<TypedValue> m_values;
};

/// Values of other types are compared as they were declared. What has another type than the option
/// may still equal one of its values, so that counts as a change.
std::vector<std::string> brokenNumbers(Declaration const& older, Declaration const& newer) {
    std::vector<std::string> broken;
    Numbers const allowedBefore(older.allowed);
    Numbers const allowed(newer.allowed);
    std::set const deprecatedBefore(older.deprecated.begin(), older.deprecated.end());
    std::set const deprecated(newer.deprecated.begin(), newer.deprecated.end());
    if (older.allowed.empty() && !newer.allowed.empty()) {
        broken.push_back("only listed values are allowed");
    }
    for (TypedValue const& value : older.allowed) {
        if (!newer.allowed.empty() && !allowed.contains(value)) {
            broken.push_back("value " + inQuotes(value.text) + " is refused");
        }
    }
    for (auto const& pair : older.deprecated) {
        if (!deprecated.contains(pair)) {
            broken.push_back("value " + inQuotes(pair.first.text) + " no longer means " +
                             inQuotes(pair.second.text));
        }
    }
    bool const mixesTypes = std::ranges::any_of(
        older.allowed, [&](TypedValue const& value) { return value.type != older.type; });
    for (auto const& pair : newer.deprecated) {
        bool const mayBeAccepted = older.allowed.empty() || mixesTypes ||
                                   pair.first.type != older.type ||
                                   allowedBefore.contains(pair.first);
        if (mayBeAccepted && !deprecatedBefore.contains(pair)) {
            broken.push_back("value " + inQuotes(pair.first.text) + " now means " +
                             inQuotes(pair.second.text));
        }
    }
    return broken;
}

}  // namespace

std::vector<std::string> brokenValues(Declaration const& older, Declaration const& newer) {
    if (older.allowed == newer.allowed && older.deprecated == newer.deprecated) {
        return {};
    }
    return older.type == "string" ? brokenTexts(older, newer) : brokenNumbers(older, newer);
}

}  // namespace clidiff
