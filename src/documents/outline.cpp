#include "documents/outline.h"

#include <algorithm>

#include "documents/printable.h"

namespace varo_3_3::internal {
namespace {

using Entry = Outline::Entry;

/// Whether a modifier fits an action: the tags of both are in byte order.
bool shareTag(Declaration const& modifier, Declaration const& action) {
    int left = 0;
    int right = 0;
    while (left < modifier.actionCount && right < action.actionCount) {
        int const order = std::string_view(modifier.actions[left]).compare(action.actions[right]);
        if (order == 0) {
            return true;
        }
        ++(order < 0 ? left : right);
    }
    return false;
}

bool hasName(Declaration const& declaration, std::string_view name) {
    bool const canBeNegated = declaration.type == mosaic2::vtBool && name.starts_with("no-");
    for (int number = 0; number < declaration.nameCount; ++number) {
        std::string_view const own = declaration.names[number];
        if (own == name || (canBeNegated && own == name.substr(3))) {
            return true;
        }
    }
    return false;
}

int compareTags(Declaration const& left, Declaration const& right) {
    int const common = std::min(left.actionCount, right.actionCount);
    for (int number = 0; number < common; ++number) {
        int const order = std::string_view(left.actions[number]).compare(right.actions[number]);
        if (order != 0) {
            return order;
        }
    }
    return left.actionCount - right.actionCount;
}

/// The place of an option's section: those without one come first.
int rankOf(Declaration const& declaration) {
    return declaration.section[0] == '\0' ? -1 : declaration.sectionNumber;
}

int compareGroups(Entry const& left, Entry const& right) {
    if (left.part != right.part) {
        return left.part - right.part;
    }
    if (left.part == Outline::kModifiers) {
        return compareTags(*left.declaration, *right.declaration);
    }
    return left.part == Outline::kOptions ? rankOf(*left.declaration) - rankOf(*right.declaration)
                                          : 0;
}

bool isBefore(Entry const& left, Entry const& right) {
    int order = compareGroups(left, right);
    order = order != 0 ? order : left.key.compare(right.key);
    return order < 0 || (order == 0 && left.declaration->index < right.declaration->index);
}

/// By a heap, which is a third of the code that std::sort is.
void sort(std::vector<Entry>& entries) {
    std::make_heap(entries.begin(), entries.end(), isBefore);
    std::sort_heap(entries.begin(), entries.end(), isBefore);
}

/// Where the entries with this key begin, in a list of one group.
std::size_t find(std::vector<Entry> const& entries, std::string_view key) {
    std::size_t first = 0;
    std::size_t last = entries.size();
    while (first < last) {
        std::size_t const middle = (first + last) / 2;
        if (entries[middle].key < key) {
            first = middle + 1;
        } else {
            last = middle;
        }
    }
    return first;
}

bool contains(std::vector<Entry> const& entries, std::string_view key) {
    std::size_t const place = find(entries, key);
    return place < entries.size() && entries[place].key == key;
}

bool containsTag(std::vector<Entry> const& entries, Declaration const& declaration) {
    for (int number = 0; number < declaration.actionCount; ++number) {
        if (contains(entries, declaration.actions[number])) {
            return true;
        }
    }
    return false;
}

void addTags(std::vector<Entry>& entries, Declaration const& declaration) {
    for (int number = 0; number < declaration.actionCount; ++number) {
        entries.push_back({Outline::kActions, declaration.actions[number], &declaration});
    }
}

}  // namespace

Outline::Outline(BasicParser& parser, bool hidden, char const* topic)
    : m_parser(parser), m_isWhole(topic == nullptr && !hidden) {
    lookAround(hidden, topic);
    select(hidden, topic);
}

/// Finds the actions, the topic, and what takes plain arguments.
void Outline::lookAround(bool hidden, char const* topic) {
    forEachDeclaration(m_parser, [&](Declaration const& declaration) {
        if (declaration.isPositional != 0 && m_positional == nullptr) {
            m_positional = &declaration;
        }
        if (declaration.kind != kDeclaredAction) {
            return;
        }
        m_hasActions = true;
        if (!hidden && declaration.isHidden != 0) {
            return;
        }
        m_actionNames.push_back({kActions, declaration.names[0], &declaration});
        addTags(m_actionTags, declaration);
        if (topic != nullptr && m_topic == nullptr && hasName(declaration, topic)) {
            m_topic = &declaration;
        }
    });
    sort(m_actionNames);
    sort(m_actionTags);
}

void Outline::select(bool hidden, char const* topic) {
    forEachDeclaration(m_parser, [&](Declaration const& declaration) {
        bool const fits = declaration.kind == kDeclaredOption || &declaration == m_topic ||
                          (declaration.kind == kDeclaredModifier && m_topic != nullptr &&
                           shareTag(declaration, *m_topic));
        bool const isWanted =
            topic == nullptr || (m_topic != nullptr ? fits : hasName(declaration, topic));
        if (!isWanted || (declaration.isHidden != 0) != hidden) {
            return;
        }
        Part part = kOptions;
        if (declaration.kind == kDeclaredAction) {
            part = kActions;
        } else if (containsTag(m_actionTags, declaration)) {
            part = m_topic != nullptr ? kModifiersOfTopic : kModifiers;
            addTags(m_modifierTags, declaration);
        }
        m_entries.push_back({part, declaration.names[0], &declaration});
    });
    sort(m_entries);
    sort(m_modifierTags);
}

bool Outline::beginsPart(std::size_t number) const {
    return number == 0 || m_entries[number - 1].part != m_entries[number].part;
}

bool Outline::beginsGroup(std::size_t number) const {
    return number == 0 || compareGroups(m_entries[number - 1], m_entries[number]) != 0;
}

bool Outline::endsActions(std::size_t number) const {
    return m_entries[number].part == kActions &&
           (number + 1 == m_entries.size() || beginsPart(number + 1));
}

std::string Outline::heading(Entry const& entry) const {
    if (entry.part == kActions || entry.part == kOptions) {
        return printableLine(entry.part == kOptions ? entry.declaration->section : "");
    }
    std::string text = "Modifiers of ";
    if (entry.part == kModifiersOfTopic) {
        addDashed(text, m_topic->names[0]);
        return text;
    }
    std::vector<Entry> actions;
    for (int number = 0; number < entry.declaration->actionCount; ++number) {
        std::string_view const tag = entry.declaration->actions[number];
        for (std::size_t place = find(m_actionTags, tag);
             place < m_actionTags.size() && m_actionTags[place].key == tag; ++place) {
            Declaration const* const action = m_actionTags[place].declaration;
            actions.push_back({kActions, action->names[0], action});
        }
    }
    sort(actions);
    Declaration const* last = nullptr;
    for (Entry const& action : actions) {
        if (action.declaration != last) {
            text += last != nullptr ? ", " : "";
            addDashed(text, action.key);
            last = action.declaration;
        }
    }
    return text;
}

std::string Outline::usage() const {
    std::string text;
    for (Entry const& entry : m_entries) {
        if (entry.part == kActions && (m_topic == nullptr || m_topic == entry.declaration)) {
            addUsage(text, entry.declaration);
        }
    }
    if (!m_hasActions && m_isWhole) {
        addUsage(text, nullptr);
    }
    return text;
}

/// Appends the form of the command line with `action`, or of the one without actions.
void Outline::addUsage(std::string& text, Declaration const* action) const {
    std::size_t const begin = text.size();
    if (action != nullptr) {
        addDashed(text, action->names[0]);
        addValueForm(text, *action);
    }
    bool const hasOptions = !m_entries.empty() && m_entries.back().part == kOptions;
    if (hasOptions || (action != nullptr && containsTag(m_modifierTags, *action))) {
        text += text.size() != begin ? " " : "";
        text += "[OPTION]...";
    }
    if (m_positional != nullptr && m_positional->isHidden == 0 &&
        m_positional->kind != kDeclaredAction &&
        (action == nullptr || m_positional->actionCount == 0 || shareTag(*m_positional, *action))) {
        text += text.size() != begin ? " [<" : "[<";
        text += printableLine(m_positional->names[0]);
        text += ">]...";
    }
    text += '\n';
}

std::string Outline::together() const {
    std::string text;
    for (ActionGroup const* group = firstActionGroup(m_parser); group != nullptr;
         group = actionGroupAfter(m_parser, *group)) {
        std::string line;
        int count = 0;
        bool isShown = m_topic == nullptr;
        for (int number = 0; number < group->actionCount; ++number) {
            std::string_view const name = group->actions[number];
            if (contains(m_actionNames, name)) {
                line += count++ != 0 ? ", " : "These may be given together: ";
                addDashed(line, name);
                isShown = isShown || name == m_topic->names[0];
            }
        }
        if (count >= 2 && isShown) {
            text += line;
            text += '\n';
        }
    }
    return text;
}

void Outline::addDashed(std::string& text, std::string_view name) const {
    bool const isDouble = (m_parser.flags() & kDoubleDashHelp) != 0 && name.size() >= 2;
    text += isDouble ? "--" : "-";
    text += printableLine(name);
}

void Outline::addNegated(std::string& text, Declaration const& declaration) const {
    text += (m_parser.flags() & kDoubleDashHelp) != 0 ? "--no-" : "-no-";
    text += printableLine(declaration.names[0]);
}

void Outline::addDefault(std::string& text, Declaration const& declaration) const {
    mosaic2::variant_t const* const value = declaration.defaultValue.value;
    if (value == nullptr || declaration.type == mosaic2::vtNull) {
        return;
    }
    if (declaration.type != mosaic2::vtBool) {
        text += printableLine(declaration.defaultValue.text);
    } else if (value->can_get<bool>()) {
        value->get<bool>() ? addDashed(text, declaration.names[0]) : addNegated(text, declaration);
    }
}

void addValueForm(std::string& text, Declaration const& declaration) {
    if (declaration.type == mosaic2::vtBool || declaration.type == mosaic2::vtNull) {
        return;
    }
    if (declaration.allowedCount == 0) {
        text += "=<";
        text += declaration.typeName;
        text += '>';
    }
    for (int number = 0; number < declaration.allowedCount; ++number) {
        text += number == 0 ? "=" : " | ";
        text += printableLine(declaration.allowed[number].text);
    }
}

}  // namespace varo_3_3::internal
