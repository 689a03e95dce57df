#include "options/option_registry.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "options/split_list.h"
#include "platform/reserve_more.h"
#include "trace/diagnostic_log.h"

namespace varo_3_3 {

namespace {

constexpr std::size_t kMostNames = 3;
constexpr std::size_t kLongestThird = 2;

}  // namespace

/// The names of a list, as many as a declaration may have; and how many the list has.
struct RegisteredOptionStorage::GivenNames {
    explicit GivenNames(std::string_view list) {
        internal::splitList(list, [this](std::string_view name) {
            if (count < kMostNames) {
                names[count] = name;
            }
            ++count;
        });
    }

    std::string_view const* begin() const { return names; }
    std::string_view const* end() const { return names + count; }

    std::string_view names[kMostNames];
    std::size_t count = 0;
};

/// A help section as a declaration names it, ready to be stored without failing: its texts are
/// kept.
struct RegisteredOptionStorage::SectionChange {
    std::string_view name;
    std::string_view text;
    std::uint32_t number;  // of the section with that name, or kNone
};

RegisteredOptionStorage::RegisteredOptionStorage(Garbage* textHolder)
    : m_textHolder(textHolder), m_names(m_records) {
    m_placeholder.m_textHolder = textHolder;
}

IOption* RegisteredOptionStorage::option(char const* names, char const* actions,
                                         char const* description, bool isAction,
                                         mosaic2::das_variant_type_t type, char const* section) {
    try {
        return declare(names, actions, description, isAction, type, section);
    } catch (std::exception const&) {
        m_refusals.addNameless();
        return placeholder();
    }
}

IOption* RegisteredOptionStorage::action(char const* names, char const* description,
                                         mosaic2::das_variant_type_t type, char const* section) {
    return option(names, nullptr, description, true, type, section);
}

IOption* RegisteredOptionStorage::modifier(char const* names, char const* actions,
                                           char const* description,
                                           mosaic2::das_variant_type_t type, char const* section) {
    return option(names, actions, description, false, type, section);
}

std::uint32_t RegisteredOptionStorage::sectionNumber(std::string_view name) const {
    return m_sectionIndex.find(internal::TextHash::of(name), [&](std::uint32_t candidate) {
        return m_sections[candidate].first == name;
    });
}

void RegisteredOptionStorage::endUse() noexcept {
    if (--m_users == 0) {
        // Destroyed at the end, which may parse again or destroy the parser.
        std::vector<Retired> const retired = std::exchange(m_retired, {});
        for (auto const& [place, contents] : retired) {
            *contents = std::move(*place);
            m_pool.giveBack(*place);
        }
    }
}

void RegisteredOptionStorage::onNameAdded(OptionDescription const& record) {
    m_names.reserveMore(record, 1, record.m_tags.size());
    m_names.addName(record, record.m_names.size() - 1);
}

void RegisteredOptionStorage::onTagsAdded(OptionDescription const& record,
                                          std::set<std::string> const& tags) {
    m_names.reserveMore(record, record.m_names.size(), tags.size());
    for (std::string const& tag : tags) {
        m_names.addTag(record, tag);
    }
}

void RegisteredOptionStorage::onDefaultSet(OptionDescription const& record) {
    auto const place = std::lower_bound(m_withDefault.begin(), m_withDefault.end(), record.m_index);
    if (place == m_withDefault.end() || *place != record.m_index) {
        m_withDefault.insert(place, record.m_index);
    }
}

void RegisteredOptionStorage::onPositionalSet(OptionDescription const& record) noexcept {
    m_firstPositional = std::min(m_firstPositional, record.m_index);
}

IOption* RegisteredOptionStorage::declare(char const* names, char const* actions,
                                          char const* description, bool isAction,
                                          mosaic2::das_variant_type_t type, char const* section) {
    SectionChange const sectionChange = prepareSection(section != nullptr ? section : "");
    using enum Refusals::Reason;
    if (names == nullptr) {
        commit(sectionChange);
        return refuse(names, kNoNames);
    }
    GivenNames const given(names);
    if (given.count > kMostNames ||
        (given.count == kMostNames && given.names[kMostNames - 1].size() > kLongestThird)) {
        commit(sectionChange);
        return refuse(names, given.count > kMostNames ? kTooManyNames : kLongThirdName);
    }
    OptionDescription& record = m_pool.spare();
    if (actions != nullptr) {
        record.tag(actions);
    }
    std::uint32_t const holder = findOption(given, record.m_tags);
    bool const isFree = holder == NameIndex::kNone;
    if (!isFree && !m_replace) {
        commit(sectionChange);  // first, since the console may be a stream of the host's
        internal::varoLog("Tried to register an option with a name, which is alread registered: ",
                          names);
        return refuse(names, kNameTaken, holder);
    }
    for (std::string_view const name : given) {
        record.m_names.add(name, *m_textHolder);
    }
    if (actions != nullptr) {
        record.m_actions = keep(actions);
    }
    if (description != nullptr) {
        record.m_description = keep(description);
    }
    record.m_kind = isAction ? OptionDescription::kAction : OptionDescription::kOption;
    record.m_type = type;
    record.m_textHolder = m_textHolder;
    if (isAction) {
        record.tag(names);
    }
    record.tokenize(m_defaultTokenizer);

    internal::reserveMore(m_records, 1, 32);
    std::unique_ptr<OptionDescription> aside;
    if (!isFree && m_users > 0) {
        aside = std::make_unique<OptionDescription>();
        internal::reserveMore(m_retired, 1);
    }
    m_names.reserveMore(record, record.m_names.size(), record.m_tags.size());
    record.m_section = commit(sectionChange);
    record.m_owner = this;
    return isFree ? append(record) : replace(holder, record, std::move(aside));
}

/// The first declaration that takes the first of these names that any takes.
std::uint32_t RegisteredOptionStorage::findOption(GivenNames const& names,
                                                  std::set<std::string> const& tags) const {
    std::uint32_t found = NameIndex::kNone;
    for (std::string_view const name : names) {
        found = m_names.findRecord(name, tags);
        if (found != NameIndex::kNone) {
            break;
        }
    }
    return found;
}

std::string_view RegisteredOptionStorage::keep(std::string_view text) {
    return {m_textHolder->keep(text), text.size()};
}

IOption* RegisteredOptionStorage::refuse(char const* names, Refusals::Reason reason,
                                         std::uint32_t holder) noexcept {
    m_refusals.add(names, reason, holder);
    return placeholder();
}

IOption* RegisteredOptionStorage::placeholder() noexcept {
    m_placeholder.m_state = 3;
    return &m_placeholder;
}

RegisteredOptionStorage::SectionChange RegisteredOptionStorage::prepareSection(
    std::string_view section) {
    std::size_t const colon = std::min(section.find(':'), section.size());
    std::string_view const name = section.substr(0, colon);
    std::string_view const text = section.substr(std::min(colon + 1, section.size()));
    bool const isLast = !m_sections.empty() && m_sections[m_lastSection].first == name;
    std::uint32_t const number = isLast ? m_lastSection : sectionNumber(name);
    if (number == internal::HashIndex::kNone) {
        internal::reserveMore(m_sections, 1, 8);
        m_sectionIndex.reserveMore(1);
        return {keep(name), keep(text), number};
    }
    auto const& [heldName, heldText] = m_sections[number];
    return {heldName, text == heldText ? heldText : keep(text), number};
}

/// Stores the section, and answers its name.
std::string_view RegisteredOptionStorage::commit(SectionChange const& change) noexcept {
    m_lastSection = change.number;
    if (change.number != internal::HashIndex::kNone) {
        m_sections[m_lastSection].second = change.text;
    } else {
        m_lastSection = static_cast<std::uint32_t>(m_sections.size());
        m_sectionIndex.insert(internal::TextHash::of(change.name), m_lastSection);
        internal::emplaceReserved(m_sections, change.name, change.text);
    }
    return change.name;
}

IOption* RegisteredOptionStorage::append(OptionDescription& record) noexcept {
    m_pool.useSpare();
    record.m_index = static_cast<std::uint32_t>(m_records.size());
    m_actionCount += record.isAction() ? 1 : 0;
    internal::emplaceReserved(m_records, &record);
    m_names.addRecord(record);
    return &record;
}

/// Puts a record in the place of an earlier one. While records are in use, the earlier one is set
/// aside whole; otherwise even its address is kept, for hosts that still hold a pointer to it.
IOption* RegisteredOptionStorage::replace(unsigned long index, OptionDescription& record,
                                          std::unique_ptr<OptionDescription> aside) noexcept {
    OptionDescription*& place = m_records[index];
    m_names.removeRecord(*place);
    m_actionCount -= place->isAction() ? 1 : 0;
    if (place->m_hasDefault) {
        m_withDefault.erase(
            std::lower_bound(m_withDefault.begin(), m_withDefault.end(), place->m_index));
    }
    record.m_index = static_cast<std::uint32_t>(index);
    OptionDescription old;  // destroyed last, since what it destroys may declare again
    if (m_users > 0) {
        place->m_owner = nullptr;
        internal::emplaceReserved(m_retired, Retired{place, std::move(aside)});
        place = &record;
        m_pool.useSpare();
    } else {
        old = std::move(*place);
        *place = std::move(record);
    }
    m_names.addRecord(*place);
    m_actionCount += place->isAction() ? 1 : 0;
    if (m_firstPositional == index) {
        auto const next =
            std::find_if(m_records.begin() + static_cast<std::ptrdiff_t>(index), m_records.end(),
                         [](auto const& other) { return other->m_isPositional; });
        m_firstPositional = next != m_records.end() ? (*next)->m_index : NameIndex::kNone;
    }
    return place;
}

}  // namespace varo_3_3
