#pragma once

#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "varo/assist.h"
#include "varo/documents.h"
#include "varo/flags.h"
#include "varo/handle.h"
#include "varo/mistakes.h"
#include "varo/parser.h"
#include "varo/printable.h"
#include "varo/result_handle.h"
#include "varo/value_checks.h"
#include "varo/version.h"

// The layer that programs are written against. Not included, since they would slow down every
// compilation: varo/program.h (parseOrExit, what a program does before its own work),
// varo/completion.h (answers for shells), varo/text.h (word wrapping) and varo/trace.h (the trace).

namespace varo_3_3 {

/// Which of the sections a help text shows.
enum class Sections : bool {
    kShown = false,  ///< all but "varo_hidden"
    kHidden = true   ///< "varo_hidden" alone
};

/// A parser that is released when it goes out of scope. Declarations return handles, with which a
/// result is queried:
///
///     varo::Parser parser(varo::kUnknownIsError | varo::kDashGuard);
///     auto const level = parser.option<int>("level,l", "How warmly").defaultValue(1);
///     auto const files = parser.option<std::string>("file", "").positional().whole();
///     auto const quiet = parser.option<bool>("quiet,q", "Errors only");
///
///     varo::Result result = parser.createResult();
///     if (parser.parse(argc, argv, result) != varo::kSuccess) { ... parser.error() ... }
///     int const warmth = result[level];
///     if (!result[quiet]) {
///         for (std::string const& file : result.all(files)) { ... }
///     }
///
/// `parser->` reaches the bare interface of the same parser, IParser.
///
/// A parser that was moved from, or created when memory ran out, is empty and tests false: `->`
/// must not be used, declarations have no effect, createResult() returns an empty result, parse()
/// returns kUnusableArguments, error() says why, and help texts are "". Moving leaves handles
/// valid.
class Parser {
public:
    explicit Parser(Flags flags = {}) { createParser(&m_parser, flags); }
    Parser(Parser&& other) noexcept
        : m_parser(std::exchange(other.m_parser, nullptr)),
          m_checks(std::exchange(other.m_checks, nullptr)) {}
    Parser& operator=(Parser&& other) noexcept {
        std::swap(m_parser, other.m_parser);
        std::swap(m_checks, other.m_checks);
        return *this;
    }
    ~Parser() {
        if (m_parser != nullptr) {
            m_parser->destroy();
        }
        delete m_checks;
    }

    explicit operator bool() const noexcept { return m_parser != nullptr; }
    IParser* operator->() const noexcept { return m_parser; }
    IParser* interface() const noexcept { return m_parser; }

    /// Declares an option whose values are of type Type: bool, an integer, float, double,
    /// std::string, std::string_view, char const*, an enumeration with Words, a type with a
    /// Conversion; or void for one that takes no value. `names` and `section` are as for
    /// IParser::option. A parse refuses values that Type cannot hold. With setReplace, replace a
    /// typed declaration only by a typed one: what the bare interface declares in its place is
    /// still checked against Type.
    template <class Type>
    Option<Type> option(char const* names, char const* description, char const* section = "") {
        return declare<Option<Type>>(names, [&](mosaic2::das_variant_type_t type) {
            return m_parser->option(names, description, type, section);
        });
    }

    /// Declares an action, which says what the program does.
    template <class Type>
    Action<Type> action(char const* names, char const* description, char const* section = "") {
        return declare<Action<Type>>(names, [&](mosaic2::das_variant_type_t type) {
            return m_parser->action(names, description, type, section);
        });
    }

    /// Declares an option of some actions: `parser.modifier<int>("level", add | update, "...")`.
    template <class Type>
    Option<Type> modifier(char const* names, Actions const& actions, char const* description,
                          char const* section = "") {
        return declare<Option<Type>>(
            names,
            [&](mosaic2::das_variant_type_t type) {
                return m_parser->modifier(names, actions.list(), description, type, section);
            },
            true);
    }

    /// Allows any of the actions to be given together: `parser.allowTogether(add | list)`.
    template <class Some>
    void allowTogether(Some const& some) {
        Actions const& actions = some;
        std::set<std::string> names;
        for (std::string_view list = actions.list(); !list.empty();) {
            std::size_t const comma = list.find(',');
            names.emplace(list.substr(0, comma));
            list.remove_prefix(comma < list.size() ? comma + 1 : list.size());
        }
        if (m_parser != nullptr) {
            m_parser->allowSimultaneousActions(names);
        }
    }

    /// A new result, empty when memory runs out.
    Result createResult() const {
        IParseResult* result = nullptr;
        if (m_parser != nullptr) {
            m_parser->createResult(&result);
        }
        return Result(result);
    }

    /// Parses the arguments after argv[0] into `result`. With an empty result, they are only
    /// checked.
    int parse(int argc, char const* const* argv, Result& result) const {
        forgetReason();
        return m_parser != nullptr ? m_parser->parseArgsVector(argc, argv, result.interface())
                                   : static_cast<int>(kUnusableArguments);
    }

    /// Parses a text that is written like an option file. Applies no defaults.
    int parseText(char const* text, Result& result) const {
        forgetReason();
        return m_parser != nullptr ? m_parser->parseStream(text, result.interface())
                                   : static_cast<int>(kUnusableArguments);
    }

    /// Whether the arguments ask for an option or action, whatever else is wrong with them: see
    /// the function of this name in varo/assist.h.
    bool isAskedFor(int argc, char const* const* argv, Declared const& option) const {
        return varo_3_3::isAskedFor(m_parser, argc, argv, option.name());
    }

    /// The error, or the warnings, of the last parse; never null. When a Conversion gave a reason
    /// for refusing a value, the reason is added; the text then lives until the next call.
    char const* error() const {
        if (m_parser == nullptr) {
            return "The parser could not be created.";
        }
        char const* const error = m_parser->getErrorDesc();
        return m_checks != nullptr ? m_checks->explain(error) : error;
    }

    /// The help: a list of the actions or, when there are none, all options by section.
    char const* help(Sections sections = Sections::kShown) const {
        return m_parser != nullptr ? m_parser->getDescription(isHidden(sections)) : "";
    }

    /// The help for one declaration, by any of its names.
    char const* topicHelp(char const* topic, Sections sections = Sections::kShown) const {
        return m_parser != nullptr ? m_parser->getDescription(topic, isHidden(sections)) : "";
    }
    char const* topicHelp(Declared const& topic, Sections sections = Sections::kShown) const {
        return topicHelp(topic.name(), sections);
    }

    /// The help for the modifiers of one action.
    char const* actionHelp(char const* action, Sections sections = Sections::kShown) const {
        return m_parser != nullptr ? m_parser->getActionModifiersDescription(
                                         action != nullptr ? action : "", isHidden(sections))
                                   : "";
    }
    template <class Type, bool hasDefault>
    char const* actionHelp(Handle<Type, Role::kAction, hasDefault> const& action,
                           Sections sections = Sections::kShown) const {
        return actionHelp(action.name(), sections);
    }

    /// The help for the options that go with every action; "" if there are none.
    char const* globalHelp(Sections sections = Sections::kShown) const {
        return m_parser != nullptr ? m_parser->getGlobalModifiersDescription(isHidden(sections))
                                   : "";
    }

private:
    static bool isHidden(Sections sections) { return sections == Sections::kHidden; }

    void forgetReason() const {
        if (m_checks != nullptr) {
            m_checks->forgetReason();
        }
    }

    template <class Handle, class Declare>
    Handle declare(char const* names, Declare declareIt, bool isModifier = false) {
        using Type = typename Handle::value_type;
        Handle handle(names);
        if (m_parser == nullptr) {
            return handle;
        }
        handle.m_option = declareIt(internal::tagOf<Type>());
        if constexpr (internal::hasWords<Type>) {
            for (Word<Type> const& word : Words<Type>::list) {
                handle.m_option->allowValue(internal::textVariant(word.text));
            }
        }
        if ((internal::isChecked<Type>() || m_checks != nullptr) &&
            !isRefused(m_parser, handle.m_option) &&
            !(isModifier && isShared(handle.name(), internal::tagOf<Type>()))) {
            setCheck<Type>(handle.name());
        }
        return handle;
    }

    /// Has the values of a declaration checked if its type needs it. (Of modifiers that share a
    /// name and a type of values, only the first is set: it does the parsing.)
    template <class Type>
    void setCheck(char const* name) {
        if constexpr (internal::isChecked<Type>()) {
            if (m_checks == nullptr) {
                m_checks = new internal::ValueCheckList<>;
                if (!m_parser->addHandler(m_checks)) {
                    delete std::exchange(m_checks, nullptr);
                    mosaic2::internal::throw_bad_alloc();
                }
            }
            m_checks->set(name, internal::tagOf<Type>(), internal::checkValue<Type>);
        } else {
            m_checks->set(name, internal::tagOf<Type>(), nullptr);
        }
    }

    /// Whether more than one declaration has this primary name and values of this type.
    bool isShared(char const* name, int type) const {
        int count = 0;
        Declaration const* declaration = nullptr;
        while ((declaration = nextDeclaration(m_parser, declaration)) != nullptr) {
            bool const isSame =
                declaration->type == type && std::string_view(declaration->names[0]) == name;
            count += isSame ? 1 : 0;
        }
        return count > 1;
    }

    IParser* m_parser = nullptr;
    internal::ValueChecks* m_checks = nullptr;  // null while no declared type needs it
};

}  // namespace varo_3_3

/// Programs that do not pin the version of the interface may write varo::.
namespace varo = varo_3_3;
