// fontconfig keeps its configuration and font patterns for the life of the process, which the
// leak checker reports at exit; measuring and rendering text through pango loads them. One
// definition for the whole report test binary: the areas' folders must not add another.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }
