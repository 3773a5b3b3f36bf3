// What the leak sanitizer is to leave out: fontconfig keeps a few hundred bytes of the configuration that all of a
// process shares, until the process ends.
extern "C" const char* __lsan_default_suppressions();

extern "C" [[gnu::visibility("default")]] const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\n";
}
