// fontconfig keeps its configuration and font patterns for the life of the process, which the
// leak checker of the sanitizer build reports at exit; measuring and drawing text loads them.
// Harmless in other builds: nothing calls this unless the leak checker is linked in.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }
