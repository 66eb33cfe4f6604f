// fontconfig keeps its configuration and font patterns for the life of the process, which the
// leak checker of the sanitizer build reports at exit; measuring and rendering text through pango
// loads them. Compiled into every test binary (trellin_test), so no folder adds another.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }
