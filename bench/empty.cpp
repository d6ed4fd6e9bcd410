// The yardstick of a process start: a program that links as `ostrand` does and does nothing.
int main() { return 0; }
