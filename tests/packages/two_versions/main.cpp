// Contains two versions of the library, each used by a part of its own.

#include <cstdio>

extern "C" int useThis(char const* level);
extern "C" int useNext(char const* level);

int main() {
    std::printf("%d %d %d\n", useThis("3"), useNext("4"), useThis("5"));
}
