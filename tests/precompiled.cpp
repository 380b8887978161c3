// The program whose precompiled header the tests share. It does nothing.
int main() {}
