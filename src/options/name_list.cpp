#include "options/name_list.h"

namespace varo_3_3 {

void NameList::add(std::string_view name, Garbage& texts) {
    char* const text = texts.room(kNegation.size() + name.size() + 1);
    char* const begin = std::copy(kNegation.begin(), kNegation.end(), text);
    *std::copy(name.begin(), name.end(), begin) = '\0';
    std::string_view const kept(begin, name.size());
    if (m_size >= kFew) {
        addToMany(kept);
    } else {
        m_few[m_size] = kept;
    }
    ++m_size;
}

void NameList::addToMany(std::string_view name) {
    if (m_many.empty()) {
        m_many.assign(m_few, m_few + kFew);
    }
    m_many.push_back(name);
}

}  // namespace varo_3_3
