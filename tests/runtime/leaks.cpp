/// Tells the address sanitizer which leaks are meant: the buffers that the bridge keeps. heap.cpp counts them.
extern "C" __attribute__((visibility("default"))) char const* __lsan_default_suppressions();

char const* __lsan_default_suppressions() { return "leak:pedflux::jni::keep"; }
