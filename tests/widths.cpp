// For the check of display widths: writes the width of every character from U+00A0 on, then help
// for 40 to 200 columns, each line after its number of columns.

#include <cstdio>
#include <string>

#include "documents/display_width.h"
#include "varo/documents.h"
#include "varo/varo.h"

int main() {
    for (char32_t code = 0xA0; code < 0x110000; ++code) {
        std::putchar('0' + varo::internal::displayWidth(code));
    }
    std::putchar('\n');
    varo::Parser const parser;
    std::string const words =
        "caf\xC3\xA9 e\xCC\x81te\xCC\x81 \xE4\xB8\x80\xE4\xBA\x8C\xE4\xB8\x89 "
        "\xF0\x9F\x98\x80\xF0\x9F"
        "\x9A\x80 \xEA\xB0\x80\xEB\x82\x98 \xE0\xA4\xA8\xE0\xA4\xBF wide\xEF\xBC\xA1\xEF\xBC\xA2 "
        "z\xFF ";
    std::string text;
    for (int count = 1; count < 40; ++count) {
        text += words + std::string(static_cast<std::size_t>(count), 'w') + " ";
    }
    text += "\xE4\xB8\x80";
    for (int count = 0; count < 200; ++count) {
        text += count % 3 != 0 ? "\xE4\xB8\x80" : "x\xCC\x81";
    }
    parser
        ->option("\xE4\xB8\x80-name-with-e\xCC\x81,\xE4\xBA\x8C", text.c_str(), mosaic2::vtString,
                 (words + words + ":" + text).c_str())
        ->defaultValue(text.c_str());
    for (int columns = 40; columns <= 200; ++columns) {
        varo::HelpLayout layout;
        layout.columns = columns;
        std::string line;
        for (char const* at = varo::helpText(parser.interface(), &layout); *at != '\0'; ++at) {
            if (*at == '\n') {
                std::printf("%d %s\n", columns, line.c_str());
                line.clear();
            } else {
                line += *at;
            }
        }
    }
}
