#include "names.h"

#include <algorithm>

namespace clidiff {
namespace {

bool intersect(std::set<std::string> const& left, std::set<std::string> const& right) {
    return std::any_of(left.begin(), left.end(),
                       [&](std::string const& tag) { return right.contains(tag); });
}

std::size_t commonLength(std::string_view left, std::string_view right) {
    auto const stop = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
    return static_cast<std::size_t>(stop.first - left.begin());
}

}  // namespace

Names::Names(CommandLine const& line) : m_line(line) {
    for (std::size_t number = 0; number < line.declarations.size(); ++number) {
        Declaration const& declaration = line.declarations[number];
        for (std::string const& name : declaration.names) {
            m_keys.push_back({name, number, m_keys.size(), false});
            if (declaration.type == "bool") {
                m_keys.push_back({"no-" + name, number, m_keys.size(), true});
            }
        }
    }
    std::sort(m_keys.begin(), m_keys.end(), [](Key const& left, Key const& right) {
        int const order = left.text.compare(right.text);
        return order != 0 ? order < 0 : left.order < right.order;
    });
}

std::span<Names::Key const> Names::exactly(std::string_view text) const {
    auto const begin = std::ranges::lower_bound(m_keys, text, {}, &Key::text);
    auto const end = std::ranges::upper_bound(m_keys, text, {}, &Key::text);
    return {begin, end};
}

Names::Meaning Names::find(std::string_view typed) const {
    Meaning meaning;
    if (typed.empty()) {
        return meaning;
    }
    meaning.candidates = exactly(typed);
    if (meaning.candidates.empty()) {
        auto const begin = std::ranges::lower_bound(m_keys, typed, {}, &Key::text);
        auto const end = std::partition_point(
            begin, m_keys.end(), [&](Key const& key) { return key.text.starts_with(typed); });
        meaning.candidates = {begin, end};
    }
    if (meaning.candidates.empty()) {
        return meaning;
    }
    Key const& first = *std::ranges::min_element(meaning.candidates, {}, &Key::order);
    meaning.kind =
        meaning.candidates.size() == 1 || isOneOption(first) ? Meaning::kOne : Meaning::kAmbiguous;
    meaning.declaration = first.declaration;
    meaning.isNegated =
        m_line.declarations[first.declaration].type == "bool" && first.text.starts_with("no-");
    return meaning;
}

/// Whether several candidates are taken for the first of them: one option that was declared for
/// different actions.
bool Names::isOneOption(Key const& first) const {
    if (exactly(first.text).size() < 2) {
        return false;
    }
    Declaration const& declaration = m_line.declarations[first.declaration];
    return std::ranges::none_of(exactly(declaration.names.front()), [&](Key const& key) {
        Declaration const& other = m_line.declarations[key.declaration];
        return key.declaration > first.declaration && other.names == declaration.names &&
               intersect(other.tags, declaration.tags);
    });
}

// The texts as a tree of characters: beginnings that end between the same two nodes are followed
// by the same texts. A node is a text, or where two neighbours part, and right after each node the
// next group begins. The last one before a text is there for messages, which name the ends of a
// group.
std::vector<std::string_view> tellingBeginnings(std::vector<std::string_view> const& texts) {
    std::vector<std::string_view> beginnings;
    for (std::size_t at = 0; at < texts.size(); ++at) {
        std::string_view const text = texts[at];
        std::size_t const before = at > 0 ? commonLength(text, texts[at - 1]) : 0;
        std::size_t const after = at + 1 < texts.size() ? commonLength(text, texts[at + 1]) : 0;
        for (std::size_t const length :
             {before, before + 1, after, after + 1, text.size() - 1, text.size()}) {
            if (length > 0 && length <= text.size()) {
                beginnings.push_back(text.substr(0, length));
            }
        }
    }
    sortUnique(beginnings);
    return beginnings;
}

void sortUnique(std::vector<std::string_view>& texts) {
    std::sort(texts.begin(), texts.end());
    texts.erase(std::unique(texts.begin(), texts.end()), texts.end());
}

}  // namespace clidiff
