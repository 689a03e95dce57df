#pragma once

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "varo/event_handler.h"
#include "varo/result.h"
#include "varo/value_type.h"

namespace varo_3_3::internal {

/// The handler of a parser whose declared types its own conversion does not know: refuses what is
/// not one of their values, and remembers why. The work is done in ValueCheckList, so that programs
/// without such types do not compile it.
class ValueChecks : public EventHandler {
public:
    /// Whether a value is of the type; `reason` may say why not.
    using Check = bool (*)(Value const& value, std::string& reason);

    virtual ~ValueChecks() = default;

    /// From now on checks the values of `name`, a primary name, that have the type `tag`. Null ends
    /// that.
    virtual void set(char const* name, mosaic2::das_variant_type_t tag, Check check) = 0;

    virtual void forgetReason() = 0;

    /// `error`, with the reason of the last refusal added if that is what it reports. Lives until
    /// another error is explained.
    virtual char const* explain(char const* error) = 0;
};

template <class Text = std::string>
class ValueCheckList final : public ValueChecks {
public:
    void set(char const* name, mosaic2::das_variant_type_t tag, Check check) override {
        auto const old = m_checks.find(Key{name, tag});
        if (old != m_checks.end()) {
            m_checks.erase(old);
        }
        if (check != nullptr) {
            m_checks.insert({name, tag, check});
        }
    }

    void forgetReason() override {
        m_refused.clear();
        m_reason.clear();
    }

    bool onOptionParse(char const* /*name*/) override {
        forgetReason();  // the value may be refused by another handler, before this one is asked
        return true;
    }

    bool onValueParse(char const* name, Value const& value) override {
        forgetReason();
        auto const entry = m_checks.find(Key{name, value.value().m_type});
        if (entry == m_checks.end() || entry->check(value, m_reason)) {
            return true;
        }
        m_refused = Text("' is not valid for option '") + name + "' in argument '";
        return false;
    }

    char const* explain(char const* error) override {
        if (m_reason.empty() || m_refused.empty() ||
            std::string_view(error).find(m_refused) == std::string_view::npos) {
            return error;
        }
        // The same text again for the same error, since a host may still hold the first one.
        Text explained = Text(error) + ": " + m_reason;
        if (explained != m_error) {
            m_error.swap(explained);
        }
        return m_error.c_str();
    }

private:
    using Key = std::pair<std::string_view, mosaic2::das_variant_type_t>;
    struct Entry {
        Text name;
        mosaic2::das_variant_type_t tag;
        Check check;

        operator Key() const { return {name, tag}; }
    };
    struct ByKey {
        using is_transparent = void;
        bool operator()(Key const& left, Key const& right) const { return left < right; }
    };

    std::set<Entry, ByKey> m_checks;
    Text m_reason;
    Text m_refused;  // what the error says when it is about the refused option
    Text m_error;
};

/// Whether a value that the parser has converted is a Type.
template <class Type>
bool checkValue(Value const& value, std::string& reason) {
    if (read<Type>(value.value(), reason)) {
        return true;
    }
    explainRange<Type>(reason);
    return false;
}

}  // namespace varo_3_3::internal
