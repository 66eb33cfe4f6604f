// Fontconfig keeps its font configuration for the life of the process and never frees it; the
// leak checker of the sanitizer build would count that cache against every test that draws text.

extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }
