// The properties of text that was laid out in lines, for any text, caption and widths.

#include <stdexcept>

#include "input.h"
#include "varo/text.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::Input input(data, size);
    unsigned long const indent = input.number(32);
    unsigned long const width = input.number(64);
    std::string const caption = input.text('\n');
    std::string const text = input.text('\xFF');
    constexpr char kBlanks[] = " \n";
    bool const hasWord = text.find_first_not_of(kBlanks) != std::string::npos;
    std::string block;
    try {
        block = varo_3_3::paragraphString(text, caption, indent, width);
        REQUIRE(width != 1 || !hasWord);
    } catch (std::out_of_range const&) {
        REQUIRE(width == 1 && hasWord);
        return 0;
    }
    REQUIRE(block.empty() == text.empty());
    REQUIRE(block.empty() || block.back() == '\n');

    unsigned long const limit = width == 0 ? std::string::npos : indent + width - 1;
    std::string beginning = caption;
    std::size_t done = 0;  // of the text
    fuzz::Input lines(block);
    while (!lines.isEmpty()) {
        std::string const line = lines.text('\n');
        if (beginning.size() >= indent && !beginning.empty()) {
            if (beginning.size() - indent + 1 >= width - 1) {
                REQUIRE(line == beginning);  // a caption that leaves no room
                beginning.clear();
                continue;
            }
            beginning += ' ';
        } else {
            beginning.resize(indent, ' ');
        }
        REQUIRE(line.size() <= limit && line.compare(0, beginning.size(), beginning) == 0);
        std::string const body = line.substr(beginning.size());
        done = std::min(text.find_first_not_of(kBlanks, done), text.size());
        REQUIRE(text.compare(done, body.size(), body) == 0);
        done += body.size();
        bool const endsAtWord = done == text.size() || text[done] == ' ' || text[done] == '\n' ||
                                (!body.empty() && body.back() == ' ');
        bool const isFullWord = line.size() == limit && body.find(' ') == std::string::npos;
        REQUIRE(endsAtWord || isFullWord);
        beginning.clear();
    }
    REQUIRE(text.find_first_not_of(kBlanks, done) == std::string::npos);
    return 0;
}
