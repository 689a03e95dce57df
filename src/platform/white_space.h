#pragma once

#include <array>
#include <locale>
#include <optional>

namespace varo_3_3::internal {

/// What is white space in the C++ global locale. Its table is fetched at the first character that
/// could be white space in some locale: a process that has not used locales yet would otherwise
/// spend more time on setting them up than on parsing.
class WhiteSpace {
public:
    bool contains(char character) {
        return !kIsPlain[static_cast<unsigned char>(character)] && isSpace(character);
    }

    /// Keeps the current locale, for a caller whose work may change it.
    void capture() {
        if (m_facet == nullptr) {
            m_facet = &std::use_facet<std::ctype<char>>(m_locale.emplace());
        }
    }

private:
    /// ASCII letters, digits and "-" are white space in no locale.
    static constexpr std::array<bool, 256> kIsPlain = [] {
        std::array<bool, 256> isPlain{};
        for (unsigned char character = 0; character < 128; ++character) {
            unsigned char const lower = character | 0x20;
            isPlain[character] = (lower >= 'a' && lower <= 'z' && character >= 'A') ||
                                 (character >= '0' && character <= '9') || character == '-';
        }
        return isPlain;
    }();

    [[gnu::noinline]] bool isSpace(char character) {
        capture();
        return m_facet->is(std::ctype_base::space, character);
    }

    std::optional<std::locale> m_locale;  // keeps the facet alive
    std::ctype<char> const* m_facet = nullptr;
};

}  // namespace varo_3_3::internal
