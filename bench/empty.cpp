// What every C++ program pays before main.
int main() {}
