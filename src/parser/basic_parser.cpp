#include "parser/basic_parser.h"

#include <exception>
#include <string_view>
#include <typeinfo>

#include "help/option_help.h"
#include "platform/throw.h"

namespace varo_3_3 {

BasicParser::BasicParser(int flags)
    : m_registry(&m_garbage), m_garbage(m_firstTexts, sizeof(m_firstTexts)), m_flags(flags) {
    // Room for the fixed texts, which are needed when no memory is left.
    m_lastError.reserve(std::string_view(kUnidentifiedProblemText).size());
    if ((flags & kKeepCommas) != 0) {
        m_registry.setDefaultTokenizer('\0');
    }
}

/// Calls `visit` for every handler, in the order of their addresses, until it returns false.
/// Handlers may come and go meanwhile: each is visited only if it is registered when its turn
/// comes.
template <class Visit>
void BasicParser::visitHandlers(Visit visit) {
    auto next = m_handlers.begin();
    while (next != m_handlers.end()) {
        EventHandler* const handler = *next;
        if (!visit(*handler)) {
            return;
        }
        next = m_handlers.upper_bound(handler);
    }
}

bool BasicParser::onOptionParse(char const* name) {
    char const* const held = m_garbage.init(name);
    visitHandlers([&](EventHandler& handler) {
        handler.onOptionParse(held);
        return true;
    });
    return true;
}

bool BasicParser::onValueParse(char const* name, Value const& value) {
    char const* const held = m_garbage.init(name);
    Value const heldValue(m_garbage.init(value.text()), value.value(), value.position());
    bool isAccepted = true;
    visitHandlers([&](EventHandler& handler) {
        isAccepted = handler.onValueParse(held, heldValue);
        return isAccepted;
    });
    return isAccepted;
}

bool BasicParser::onUknownArgument(char const* argument) {
    char const* const held = m_garbage.init(argument);
    bool isError = true;
    visitHandlers([&](EventHandler& handler) {
        isError = handler.onUknownArgument(held) && isError;
        return true;  // intended: unlike a value, an unknown argument is shown to every handler
    });
    return isError;
}

void BasicParser::destroy() {
    delete this;
}

int BasicParser::createResult(IParseResult** result) {
    if (result == nullptr) {
        return kUnusableArguments;
    }
    try {
        *result = new ParseResult();
    } catch (std::exception const&) {
        return kUnusableArguments;
    }
    return kSuccess;
}

IOption* BasicParser::option(char const* name, char const* description,
                             mosaic2::das_variant_type_t type, char const* section) {
    return m_registry.option(name, nullptr, description, false, type, section);
}

IOption* BasicParser::action(char const* name, char const* description,
                             mosaic2::das_variant_type_t type, char const* section) {
    return m_registry.action(name, description, type, section);
}

IOption* BasicParser::modifier(char const* name, char const* action, char const* description,
                               mosaic2::das_variant_type_t type, char const* section) {
    return m_registry.modifier(name, action, description, type, section);
}

bool BasicParser::isOptionDeclared(char const* name, bool action, char const* section) {
    return name != nullptr &&
           m_registry.names().anyRecordNamed(name, [&](OptionDescription const& record) {
               return record.isAction() == action &&
                      (section == nullptr || record.m_section == section);
           });
}

char const* BasicParser::getErrorDesc() {
    // These are needed when memory is short, and must not take any.
    for (char const* const fixed : {"", kUnidentifiedProblemText, kHelpFailedText}) {
        if (m_lastError == fixed) {
            return fixed;
        }
    }
    try {
        return m_garbage.init(m_lastError);
    } catch (std::exception const&) {
        return "Out of memory.";
    }
}

/// Builds a help text and keeps it for the host.
template <class Build>
char const* BasicParser::holdHelp(Build build) {
    try {
        return m_garbage.init(build());
    } catch (...) {
        m_lastError = kHelpFailedText;
        return getErrorDesc();
    }
}

char const* BasicParser::getDescription(bool hidden) {
    return holdHelp([&] { return generalHelp(m_registry, HelpStyle{m_flags, hidden}); });
}

char const* BasicParser::getDescription(char const* topic, bool hidden) {
    if (topic == nullptr) {
        return getDescription(hidden);
    }
    return holdHelp([&] { return topicHelp(m_registry, topic, HelpStyle{m_flags, hidden}); });
}

char const* BasicParser::getActionModifiersDescription(char const* action, bool hidden) {
    if (action == nullptr) {
        internal::throwLogicError("basic_string::_M_construct null not valid");
    }
    return holdHelp([&] { return actionHelp(m_registry, action, HelpStyle{m_flags, hidden}); });
}

char const* BasicParser::getGlobalModifiersDescription(bool hidden) {
    return holdHelp([&] { return globalModifiersHelp(m_registry, HelpStyle{m_flags, hidden}); });
}

bool BasicParser::addHandler(EventHandler* handler) {
    try {
        return handler != nullptr && handler != this && m_handlers.insert(handler).second;
    } catch (std::exception const&) {  // no memory
        return false;
    }
}

bool BasicParser::removeHandler(EventHandler* handler) {
    return m_handlers.erase(handler) != 0;
}

bool BasicParser::addOptionFileOption(char const* description, char const* section) {
    m_optionFileEnabled = true;
    return !m_registry.isPlaceholder(
        option(kOptionFileName.data(), description, mosaic2::vtString, section));
}

void BasicParser::setReplace(bool replace) {
    m_registry.setReplace(replace);
}

void BasicParser::setLastError(std::string const& text) {
    m_lastError = text;
}

// The class is final and private to this library, so its type information has one address. A
// dynamic_cast would be one more symbol for the loader to find in the standard library.
BasicParser* basicParserOf(IParser* parser) noexcept {
    if (parser == nullptr) {
        return nullptr;
    }
    IParser const& object = *parser;
    return &typeid(object) == &typeid(BasicParser) ? static_cast<BasicParser*>(parser) : nullptr;
}

int createParser(IParser** parser, int flags) {
    if (parser == nullptr) {
        return kUnusableArguments;
    }
    try {
        *parser = new BasicParser(flags);
    } catch (std::exception const&) {
        return kUnusableArguments;
    }
    return kSuccess;
}

}  // namespace varo_3_3
