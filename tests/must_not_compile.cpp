// A program in which the one line that CASE chooses is wrong; without it, it compiles. What the
// compiler must say of each is in CMakeLists.txt.

#include <varo/varo.h>

#include <string>

enum class Shape { circle, square };

template <>
struct varo::Words<Shape> {
    static constexpr varo::Word<Shape> list[] = {{"circle", Shape::circle}};
};

struct Unheard {};

void program(varo::Parser& parser, varo::Result& result) {
    auto const add = parser.action<void>("add", "");
    auto const level = parser.option<int>("level", "").defaultValue(1);
    auto const depth = parser.option<unsigned>("depth", "");
    auto const files = parser.option<std::string>("file", "").positional();
    auto const shape = parser.option<Shape>("shape", "").defaultValue(Shape::square);
    parser.modifier<bool>("all", add, "");
    int const warmth = result[level];
    Shape const form = result[shape];
    std::string all = std::to_string(warmth + static_cast<int>(form) + (result[depth] ? 1 : 0));
    for (std::string const& file : result.all(files)) {
        all += file;
    }
#if CASE == 1
    (void)result[levle];
#elif CASE == 2
    std::string const text = result[level];
#elif CASE == 3
    unsigned const number = result[depth];
#elif CASE == 4
    parser.modifier<int>("x", "ad", "");
#elif CASE == 5
    parser.modifier<int>("x", level, "");
#elif CASE == 6
    (void)parser.option<bool>("x", "").defaultValue("yes");
#elif CASE == 7
    parser.option<int>("x", "").allow(1, 2.5);
#elif CASE == 8
    parser.option<std::string>("x", "").allow("a", 1);
#elif CASE == 9
    (void)parser.option<Shape>("x", "").defaultValue(0);
#elif CASE == 10
    parser.option<Shape>("x", "").allow(Shape::circle);
#elif CASE == 11
    parser.option<void>("x", "").positional();
#elif CASE == 12
    parser.option<Unheard>("x", "");
#elif CASE == 13
    parser.option<char>("x", "");
#elif CASE == 14
    level.defaultValue(2);
#elif CASE == 15
    parser.allowTogether(add, level);
#endif
}
