#pragma once

#include <string>
#include <string_view>

#include "documents/declarations.h"
#include "platform/text_sort.h"

namespace varo_3_3::internal {

/// What every document tells of the declarations, and in which order: the actions; the modifiers,
/// together those that fit the same actions; the options by section, in front those without one.
/// In each of these by primary name. All of it may throw std::bad_alloc.
class Outline {
public:
    enum Part { kActions, kModifiersOfTopic, kModifiers, kOptions };

    /// What is hidden, or what is not. With an action as `topic`, this one and what fits it; with
    /// another topic, the declarations of that name; with null, all.
    Outline(BasicParser& parser, bool hidden, char const* topic);

    // The entries, by their numbers.
    std::size_t size() const { return m_entries.size(); }
    Part part(std::size_t number) const { return partOf(m_entries[number]); }
    Declaration const& declaration(std::size_t number) const {
        return declarationOf(m_entries[number]);
    }

    /// Whether an entry belongs to another part, or another group of one, than the one before.
    bool beginsPart(std::size_t number) const;
    bool beginsGroup(std::size_t number) const;

    /// Whether it is the last one of the actions.
    bool endsActions(std::size_t number) const;

    // The texts below are appended.

    /// What stands above an entry's group: "Modifiers of --scan, --report", or the section's name;
    /// nothing for actions and for options without a section.
    void addHeading(std::string& text, std::size_t number) const;

    /// The forms of the command line, one a line, without the program's name: for each action
    /// shown; or one if none is declared; or, for a topic that is no action, none.
    void addUsage(std::string& text) const;

    /// "These may be given together: --save, --scan": a line for each group of actions that is
    /// shown, or that the topic is in.
    void addTogether(std::string& text) const;

    /// A name as help writes it, "--level" or "-level".
    void addDashed(std::string& text, std::string_view name) const;

    /// The form that says "no", "--no-color".
    void addNegated(std::string& text, Declaration const& declaration) const;

    /// The value that the declaration has without being given, of a switch the form, after `lead`.
    /// False and nothing if it has none, or one that has no text.
    bool addDefault(std::string& text, char const* lead, Declaration const& declaration) const;

private:
    static Part partOf(SortItem const& entry) { return static_cast<Part>(entry.group >> 32U); }
    static Declaration const& declarationOf(SortItem const& entry) {
        return *static_cast<Declaration const*>(entry.item);
    }
    static int compareTags(SortItem const& left, SortItem const& right);
    void lookAround(bool hidden, char const* topic);
    void select(bool hidden, char const* topic);
    Part partFor(Declaration const& declaration) const;
    void addUsage(std::string& text, Declaration const* action) const;
    SortItems actionsOf(Declaration const& modifier) const;

    BasicParser& m_parser;
    bool const m_isWhole;                  // only what is hidden was left out
    Declaration const* m_topic = nullptr;  // when it is an action
    Declaration const* m_positional = nullptr;
    bool m_hasActions = false;
    SortItems m_entries;  // grouped by part, in options by section

    // By other keys: the actions by name; the actions by the tags that modifiers ask for; the
    // modifiers that are shown by the tags that they have.
    SortItems m_actionNames;
    SortItems m_actionTags;
    SortItems m_modifierTags;
};

/// Appends what stands after the names of a declaration: "=<integer>", "=csv | json", or nothing.
void addValueForm(std::string& text, Declaration const& declaration);

}  // namespace varo_3_3::internal
