#include <set>
#include <string>
#include <vector>

// What all_headers.cpp is compared with.

int main() {}
