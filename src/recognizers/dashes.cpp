#include "recognizers/dashes.h"

#include <algorithm>
#include <array>

#include "platform/utf.h"

namespace varo_3_3 {
namespace {

/// Hyphen-minus, figure dash, en dash, em dash, horizontal bar, swung dash.
constexpr std::array kDashes = {BRIX::utf32_to_utf8(0x002D), BRIX::utf32_to_utf8(0x2012),
                                BRIX::utf32_to_utf8(0x2013), BRIX::utf32_to_utf8(0x2014),
                                BRIX::utf32_to_utf8(0x2015), BRIX::utf32_to_utf8(0x2053)};

constexpr char kLongDashLead = '\xE2';  // begins every long dash

}  // namespace

unsigned long getDashLength(std::string_view arg, unsigned long pos) {
    std::string_view const rest = arg.substr(pos);
    if (rest.empty() || !(rest.front() == '-' || rest.front() == kLongDashLead)) {
        return 0;
    }
    for (BRIX::utf8_t const& dash : kDashes) {
        if (rest.starts_with(dash.view())) {
            return dash.m_length;
        }
    }
    return 0;
}

bool splitOptionValue(std::string_view arg, BRIX::WhiteSpace& whiteSpace, std::string_view* name,
                      std::string_view* value) {
    unsigned long const firstDash = getDashLength(arg, 0);
    arg.remove_prefix(firstDash + getDashLength(arg, firstDash));
    auto const isSpace = [&](char character) { return whiteSpace.contains(character); };
    auto const separator = std::find_if(arg.begin(), arg.end(), [&](char character) {
        return character == '=' || isSpace(character);
    });
    auto const at = static_cast<std::size_t>(separator - arg.begin());
    *name = arg.substr(0, at);
    if (separator == arg.end()) {
        return false;
    }
    auto const begin =
        *separator == '=' ? separator + 1 : std::find_if_not(separator, arg.end(), isSpace);
    *value = arg.substr(static_cast<std::size_t>(begin - arg.begin()));
    return true;
}

}  // namespace varo_3_3
