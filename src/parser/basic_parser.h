#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "options/garbage.h"
#include "options/option_registry.h"
#include "parser/action_rules.h"
#include "parser/parse_session.h"
#include "recognizers/argument_list.h"
#include "varo/parser.h"

namespace varo_3_3 {

/// Separates options from plain arguments.
inline constexpr std::string_view kEndMarker = "--";

/// As the first of a list of arguments, switches the trace on.
inline constexpr std::string_view kLogSwitch = "varooption=varologenable=1";

// Texts for failures that have none of their own.
inline constexpr char const* kUnidentifiedProblemText = "Unidentified problem detected.";
inline constexpr char const* kHelpFailedText = "Unknown error handled.";

/// What the host was shown of the declarations; the room that shows them defines it.
struct DeclarationViews;

/// The implementation of IParser: owns the declarations and the texts handed out, drives parses,
/// and receives the recognizers' events, which it passes on to the host's handlers. Its definition
/// is spread over four files: this class's own, parse_driver, option_files and action_rules.
class BasicParser final : public IParser {
public:
    explicit BasicParser(int flags);

    // Events, passed on to every handler.
    bool onOptionParse(char const* name) override;
    bool onValueParse(char const* name, Value const& value) override;
    bool onUknownArgument(char const* argument) override;

    void destroy() override;
    int createResult(IParseResult** result) override;
    IOption* option(char const* name, char const* description, mosaic2::das_variant_type_t type,
                    char const* section) override;
    IOption* action(char const* name, char const* description, mosaic2::das_variant_type_t type,
                    char const* section) override;
    IOption* modifier(char const* name, char const* action, char const* description,
                      mosaic2::das_variant_type_t type, char const* section) override;
    bool isOptionDeclared(char const* name, bool action, char const* section) override;
    int parseArgsVector(int argc, char const* const* argv, IParseResult* result) override;
    int parseStream(char const* text, IParseResult* result) override;
    char const* getErrorDesc() override;
    char const* getDescription(bool hidden) override;
    char const* getDescription(char const* topic, bool hidden) override;
    char const* getActionModifiersDescription(char const* action, bool hidden) override;
    char const* getGlobalModifiersDescription(bool hidden) override;
    bool addHandler(EventHandler* handler) override;
    bool removeHandler(EventHandler* handler) override;
    bool addOptionFileOption(char const* description, char const* section) override;
    int allowSimultaneousActions(std::set<std::string> const& actions) override;
    void setReplace(bool replace) override;

    void setLastError(std::string const& text);

    /// The error about an argument that no recognizer takes.
    static std::string unknownText(std::string_view argument);

    /// Whether one of the allowed groups has all of `actions`. Without a group nothing is allowed.
    bool assertActionsCanBeUsedSimultaneously(std::set<std::string> const& actions) const;

    // For the functions outside the interface.
    using HeldViews = std::unique_ptr<DeclarationViews, void (*)(DeclarationViews*) noexcept>;
    RegisteredOptionStorage& registry() { return m_registry; }
    RegisteredOptionStorage const& registry() const { return m_registry; }
    Garbage& texts() { return m_garbage; }
    int flags() const { return m_flags; }
    bool readsOptionFiles() const { return m_optionFileEnabled; }
    std::vector<std::set<std::string>> const& simultaneousActions() const {
        return m_simultaneousActions;
    }
    Failure* failure() { return m_failure.get(); }
    HeldViews& views() { return m_views; }
    HeldViews const& views() const { return m_views; }

protected:
    // Virtual because the interface says so; the class is final.

    /// Both phases for one list of arguments, and between them what follows "--" and the option
    /// files. Sets the last error.
    virtual int parseVector(ArgumentSource& source, internal::WhiteSpace& whiteSpace,
                            ParseResult& result);

    /// Recognizes and stores the arguments before the end marker.
    virtual int parse_phase_one(ArgumentList& args, ParseSession& session);

    /// Checks the options that were given against the actions.
    virtual int parse_phase_two(ParseSession& session);

private:
    template <class Visit>
    void visitHandlers(Visit visit);

    int runPhases(ArgumentSource& source, ParseSession& session);
    IResultCollector* collectorOf(ParseSession& session) const;
    int parseList(ArgumentSource& source, ParseSession& session);
    [[gnu::cold]] int takeUnclaimed(ArgumentList& args, ParseSession& session) const;
    int expandOptionFiles(ParseSession& session);
    int collectNonparsingArguments(ArgumentList& args, ParseSession& session);
    [[gnu::cold]] int offerToPositional(std::string_view argument, ParseSession& session);
    template <class Build>
    char const* holdHelp(Build build);

    // The members and their order are fixed up to m_reserved.
    RegisteredOptionStorage m_registry;
    Garbage m_garbage;
    std::string m_lastError;
    int m_flags;
    std::set<EventHandler*> m_handlers;
    bool m_optionFileEnabled = false;
    ActionGroups m_simultaneousActions;
    [[maybe_unused]] bool m_reserved = false;  // nothing reads it

    HeldViews m_views{nullptr, nullptr};
    std::unique_ptr<Failure> m_failure;  // of the last parse; null after success
    char m_firstTexts[1024];             // those of a small tool need no other memory
};

/// The parser behind the interface; null for null and for another implementation of IParser.
BasicParser* basicParserOf(IParser* parser) noexcept;

}  // namespace varo_3_3
