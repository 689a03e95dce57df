#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "documents/declarations.h"

namespace varo_3_3::internal {

/// What every document tells of the declarations, and in which order: the actions; the modifiers,
/// together those that fit the same actions; the options by section, in front those without one.
/// In each of these by primary name. All of it may throw std::bad_alloc.
class Outline {
public:
    enum Part { kActions, kModifiersOfTopic, kModifiers, kOptions };

    struct Entry {
        Part part;
        std::string_view key;  ///< the primary name
        Declaration const* declaration;
    };

    /// What is hidden, or what is not. With an action as `topic`, this one and what fits it; with
    /// another topic, the declarations of that name; with null, all.
    Outline(BasicParser& parser, bool hidden, char const* topic);

    std::vector<Entry> const& entries() const { return m_entries; }

    /// Whether an entry belongs to another part, or another group of one, than the one before.
    bool beginsPart(std::size_t number) const;
    bool beginsGroup(std::size_t number) const;

    /// Whether it is the last one of the actions.
    bool endsActions(std::size_t number) const;

    /// What stands above an entry's group: "Modifiers of --scan, --report", or the section's name;
    /// "" for actions and for options without a section.
    std::string heading(Entry const& entry) const;

    /// The forms of the command line, one a line, without the program's name: for each action
    /// shown; or one if none is declared; or, for a topic that is no action, none.
    std::string usage() const;

    /// "These may be given together: --save, --scan": a line for each group of actions that is
    /// shown, or that the topic is in.
    std::string together() const;

    /// Appends a name as help writes it, "--level" or "-level".
    void addDashed(std::string& text, std::string_view name) const;

    /// Appends the form that says "no", "--no-color".
    void addNegated(std::string& text, Declaration const& declaration) const;

    /// Appends the value that the declaration has without being given, of a switch the form;
    /// nothing if it has none, or one that has no text.
    void addDefault(std::string& text, Declaration const& declaration) const;

private:
    void lookAround(bool hidden, char const* topic);
    void select(bool hidden, char const* topic);
    void addUsage(std::string& text, Declaration const* action) const;

    BasicParser& m_parser;
    bool const m_isWhole;                  // only what is hidden was left out
    Declaration const* m_topic = nullptr;  // when it is an action
    Declaration const* m_positional = nullptr;
    bool m_hasActions = false;
    std::vector<Entry> m_entries;

    // With other keys: the actions by name; the actions by the tags that modifiers ask for; the
    // modifiers that are shown by the tags that they have.
    std::vector<Entry> m_actionNames;
    std::vector<Entry> m_actionTags;
    std::vector<Entry> m_modifierTags;
};

/// Appends what stands after the names of a declaration: "=<integer>", "=csv | json", or nothing.
void addValueForm(std::string& text, Declaration const& declaration);

}  // namespace varo_3_3::internal
