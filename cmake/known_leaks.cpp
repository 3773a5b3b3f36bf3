// What the leak sanitizer is to leave out, without a word: fontconfig keeps a few hundred bytes of the configuration
// that all of a process shares, until the process ends.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_options();

extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}

extern "C" [[gnu::visibility("default")]] const char* __lsan_default_options() { return "print_suppressions=0"; }
