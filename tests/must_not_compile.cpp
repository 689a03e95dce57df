// A program in which every marked line is wrong. The compiler must complain about each of them with
// the words of its mark, and about nothing when WRONG is not defined: see must_not_compile.sh.

#include <varo/varo.h>

#include <string>

enum class Shape { kCircle, kSquare };

template <>
struct varo::Words<Shape> {
    static constexpr varo::Word<Shape> list[] = {{"circle", Shape::kCircle}};
};

struct Unheard {};

void program(varo::Parser& parser, varo::Result& result) {
    auto const add = parser.action<void>("add", "");
    auto const level = parser.option<int>("level", "").defaultValue(1);
    auto const depth = parser.option<unsigned>("depth", "");
    auto const files = parser.option<std::string>("file", "").positional();
    auto const shape = parser.option<Shape>("shape", "").defaultValue(Shape::kSquare);
    auto const quiet = parser.option<void>("quiet", "");
    parser.modifier<bool>("all", add, "");
    (void)result[quiet];
    int const warmth = result[level];
    Shape const form = result[shape];
    std::string all = std::to_string(warmth + static_cast<int>(form) + (result[depth] ? 1 : 0));
    for (std::string const& file : result.all(files)) {
        all += file;
    }
#ifdef WRONG
    (void)result[levle];                                     // not declared|undeclared
    std::string const text = result[level];                  // conver
    unsigned const number = result[depth];                   // conver
    parser.modifier<int>("x", "ad", "");                     // convert|no matching
    parser.modifier<int>("x", level, "");                    // convert|no matching
    parser.allowTogether(level);                             // initializ|no viable
    (void)parser.option<bool>("x", "").defaultValue("yes");  // The option is boolean
    parser.option<int>("x", "").allow(1, 2.5);               // The option is an integer
    parser.option<std::string>("x", "").allow("a", 1);       // The option is a text
    (void)parser.option<Shape>("x", "").defaultValue(0);     // The option is another enumeration
    parser.option<Shape>("x", "").allow(Shape::kCircle);     // The type already says
    parser.option<void>("x", "").positional();               // The option takes no value
    parser.option<Unheard>("x", "");                         // No type for an option
    parser.option<char>("x", "");                            // No type for an option
    parser.option<int const>("x", "");                       // Declare the plain type
    (void)result.all(quiet);                                 // count its values
    level.defaultValue(2);                                   // ignoring return value
#endif
}
