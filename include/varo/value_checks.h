#pragma once

#include <set>
#include <string>
#include <string_view>

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

    /// Checks the values of `name`, a primary name, from now on; null ends that.
    virtual void set(char const* name, Check check) = 0;

    virtual void forgetReason() = 0;

    /// `error`, with the reason of the last refusal added if that is what it reports. Lives until
    /// the next call.
    virtual char const* explain(char const* error) = 0;
};

template <class Text = std::string>
class ValueCheckList final : public ValueChecks {
public:
    void set(char const* name, Check check) override {
        auto const old = m_checks.find(std::string_view(name));
        if (old != m_checks.end()) {
            m_checks.erase(old);
        }
        if (check != nullptr) {
            m_checks.insert({name, check});
        }
    }

    void forgetReason() override {
        m_refused.clear();
        m_reason.clear();
    }

    bool onValueParse(char const* name, Value const& value) override {
        forgetReason();
        auto const entry = m_checks.find(std::string_view(name));
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
        m_error = Text(error) + ": " + m_reason;
        return m_error.c_str();
    }

private:
    struct Entry {
        Text name;
        Check check;

        operator std::string_view() const { return name; }
    };
    struct ByName {
        using is_transparent = void;
        bool operator()(std::string_view left, std::string_view right) const {
            return left < right;
        }
    };

    std::set<Entry, ByName> m_checks;
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
