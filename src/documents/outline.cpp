#include "documents/outline.h"

#include <algorithm>

#include "documents/printable.h"

namespace varo_3_3::internal {
namespace {

[[gnu::noinline]] int compare(char const* left, char const* right) {
    return std::string_view(left).compare(right);
}

/// Whether a modifier fits an action: the tags of both are in byte order.
bool shareTag(Declaration const& modifier, Declaration const& action) {
    int left = 0;
    int right = 0;
    while (left < modifier.actionCount && right < action.actionCount) {
        int const order = compare(modifier.actions[left], action.actions[right]);
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

/// The place of an option's section: those without one come first.
std::uint64_t rankOf(Declaration const& declaration) {
    return declaration.section[0] == '\0'
               ? 0
               : static_cast<std::uint64_t>(declaration.sectionNumber) + 1;
}

/// Where the items with this key begin, in a list of one group.
std::size_t find(SortItems const& items, std::string_view key) {
    std::size_t first = 0;
    std::size_t last = items.size();
    while (first < last) {
        std::size_t const middle = (first + last) / 2;
        if (items[middle].key < key) {
            first = middle + 1;
        } else {
            last = middle;
        }
    }
    return first;
}

bool contains(SortItems const& items, std::string_view key) {
    std::size_t const place = find(items, key);
    return place < items.size() && items[place].key == key;
}

bool containsTag(SortItems const& items, Declaration const& declaration) {
    for (int number = 0; number < declaration.actionCount; ++number) {
        if (contains(items, declaration.actions[number])) {
            return true;
        }
    }
    return false;
}

void addTags(SortItems& items, Declaration const& declaration) {
    for (int number = 0; number < declaration.actionCount; ++number) {
        addItem(items, 0, declaration.actions[number], &declaration);
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
        addItem(m_actionNames, 0, declaration.names[0], &declaration);
        addTags(m_actionTags, declaration);
        if (topic != nullptr && m_topic == nullptr && hasName(declaration, topic)) {
            m_topic = &declaration;
        }
    });
    sortItems(m_actionNames);
    sortItems(m_actionTags);
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
        std::uint64_t const part = partFor(declaration);
        addItem(m_entries, part << 32U | (part == kOptions ? rankOf(declaration) : 0),
                declaration.names[0], &declaration);
        if (part == kModifiers || part == kModifiersOfTopic) {
            addTags(m_modifierTags, declaration);
        }
    });
    sortItems(m_entries, compareTags);
    sortItems(m_modifierTags);
}

Outline::Part Outline::partFor(Declaration const& declaration) const {
    if (declaration.kind == kDeclaredAction) {
        return kActions;
    }
    if (!containsTag(m_actionTags, declaration)) {
        return kOptions;
    }
    return m_topic != nullptr ? kModifiersOfTopic : kModifiers;
}

/// Brings modifiers together that fit the same actions.
int Outline::compareTags(SortItem const& left, SortItem const& right) {
    if (partOf(left) != kModifiers) {
        return 0;
    }
    Declaration const& first = declarationOf(left);
    Declaration const& second = declarationOf(right);
    int const common = std::min(first.actionCount, second.actionCount);
    for (int number = 0; number < common; ++number) {
        int const order = compare(first.actions[number], second.actions[number]);
        if (order != 0) {
            return order;
        }
    }
    return first.actionCount - second.actionCount;
}

bool Outline::beginsPart(std::size_t number) const {
    return number == 0 || part(number - 1) != part(number);
}

bool Outline::beginsGroup(std::size_t number) const {
    return number == 0 || m_entries[number - 1].group != m_entries[number].group ||
           compareTags(m_entries[number - 1], m_entries[number]) != 0;
}

bool Outline::endsActions(std::size_t number) const {
    return part(number) == kActions && (number + 1 == size() || beginsPart(number + 1));
}

void Outline::addHeading(std::string& text, std::size_t number) const {
    Part const ownPart = part(number);
    if (ownPart == kOptions) {
        addPrintableLine(text, declaration(number).section);
    } else if (ownPart != kActions) {
        text += "Modifiers of ";
    }
    if (ownPart == kModifiersOfTopic) {
        addDashed(text, m_topic->names[0]);
    } else if (ownPart == kModifiers) {
        void const* last = nullptr;
        for (SortItem const& action : actionsOf(declaration(number))) {
            if (action.item != last) {
                text += last != nullptr ? ", " : "";
                addDashed(text, action.key);
                last = action.item;
            }
        }
    }
}

/// The actions that a modifier fits, by name; one may be there several times.
SortItems Outline::actionsOf(Declaration const& modifier) const {
    SortItems actions;
    for (int number = 0; number < modifier.actionCount; ++number) {
        std::string_view const tag = modifier.actions[number];
        for (std::size_t place = find(m_actionTags, tag);
             place < m_actionTags.size() && m_actionTags[place].key == tag; ++place) {
            Declaration const& action = declarationOf(m_actionTags[place]);
            addItem(actions, 0, action.names[0], &action);
        }
    }
    sortItems(actions);
    return actions;
}

void Outline::addUsage(std::string& text) const {
    for (SortItem const& entry : m_entries) {
        if (partOf(entry) == kActions && (m_topic == nullptr || m_topic == entry.item)) {
            addUsage(text, &declarationOf(entry));
        }
    }
    if (!m_hasActions && m_isWhole) {
        addUsage(text, nullptr);
    }
}

/// Appends the form of the command line with `action`, or of the one without actions.
void Outline::addUsage(std::string& text, Declaration const* action) const {
    std::size_t const begin = text.size();
    if (action != nullptr) {
        addDashed(text, action->names[0]);
        addValueForm(text, *action);
    }
    bool const hasOptions = !m_entries.empty() && partOf(m_entries.back()) == kOptions;
    if (hasOptions || (action != nullptr && containsTag(m_modifierTags, *action))) {
        text += text.size() != begin ? " " : "";
        text += "[OPTION]...";
    }
    if (m_positional != nullptr && m_positional->isHidden == 0 &&
        m_positional->kind != kDeclaredAction &&
        (action == nullptr || m_positional->actionCount == 0 || shareTag(*m_positional, *action))) {
        text += text.size() != begin ? " [<" : "[<";
        addPrintableLine(text, m_positional->names[0]);
        text += ">]...";
    }
    text += '\n';
}

void Outline::addTogether(std::string& text) const {
    forEachActionGroup(m_parser, [&](ActionGroup const& group) {
        std::size_t const begin = text.size();
        int count = 0;
        bool isShown = m_topic == nullptr;
        for (int number = 0; number < group.actionCount; ++number) {
            std::string_view const name = group.actions[number];
            if (contains(m_actionNames, name)) {
                text += count++ != 0 ? ", " : "These may be given together: ";
                addDashed(text, name);
                isShown = isShown || name == m_topic->names[0];
            }
        }
        text += '\n';
        if (count < 2 || !isShown) {
            text.resize(begin);
        }
    });
}

void Outline::addDashed(std::string& text, std::string_view name) const {
    bool const isDouble = (m_parser.flags() & kDoubleDashHelp) != 0 && name.size() >= 2;
    text += isDouble ? "--" : "-";
    addPrintableLine(text, name);
}

void Outline::addNegated(std::string& text, Declaration const& declaration) const {
    text += (m_parser.flags() & kDoubleDashHelp) != 0 ? "--no-" : "-no-";
    addPrintableLine(text, declaration.names[0]);
}

bool Outline::addDefault(std::string& text, char const* lead,
                         Declaration const& declaration) const {
    mosaic2::variant_t const* const value = declaration.defaultValue.value;
    bool const isSwitch = declaration.type == mosaic2::vtBool;
    if (value == nullptr || declaration.type == mosaic2::vtNull ||
        (isSwitch ? !value->can_get<bool>() : declaration.defaultValue.text[0] == '\0')) {
        return false;
    }
    text += lead;
    if (!isSwitch) {
        addPrintableLine(text, declaration.defaultValue.text);
    } else if (value->get<bool>()) {
        addDashed(text, declaration.names[0]);
    } else {
        addNegated(text, declaration);
    }
    return true;
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
        addPrintableLine(text, declaration.allowed[number].text);
    }
}

}  // namespace varo_3_3::internal
