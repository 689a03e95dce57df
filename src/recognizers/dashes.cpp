#include "recognizers/dashes.h"

#include <array>

#include "platform/utf.h"

namespace varo_3_3 {
namespace {

/// Figure dash, en dash, em dash, horizontal bar, swung dash.
constexpr std::array kLongDashes = {BRIX::utf32_to_utf8(0x2012), BRIX::utf32_to_utf8(0x2013),
                                    BRIX::utf32_to_utf8(0x2014), BRIX::utf32_to_utf8(0x2015),
                                    BRIX::utf32_to_utf8(0x2053)};

constexpr char kLongDashLead = '\xE2';  // begins every long dash

}  // namespace

unsigned long getLongDashLength(std::string_view arg, unsigned long pos) {
    std::string_view const rest = arg.substr(pos);
    if (rest.empty() || rest.front() != kLongDashLead) {
        return 0;
    }
    for (BRIX::utf8_t const& dash : kLongDashes) {
        if (rest.starts_with(dash.view())) {
            return dash.m_length;
        }
    }
    return 0;
}

bool splitOptionValue(std::string_view arg, internal::WhiteSpace& whiteSpace,
                      std::string_view* name, std::string_view* value) {
    unsigned long const firstDash = getDashLength(arg, 0);
    arg.remove_prefix(firstDash + getDashLength(arg, firstDash));
    std::size_t at = 0;
    while (at < arg.size() && arg[at] != '=' && !whiteSpace.contains(arg[at])) {
        ++at;
    }
    *name = arg.substr(0, at);
    if (at == arg.size()) {
        return false;
    }
    bool const isEqualsSign = arg[at++] == '=';
    while (!isEqualsSign && at < arg.size() && whiteSpace.contains(arg[at])) {
        ++at;
    }
    *value = arg.substr(at);
    return true;
}

}  // namespace varo_3_3
