// fontconfig keeps its configuration and font patterns for the life of the process, which the
// leak checker reports at exit; measuring text through pango loads them.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }
