/// What the leak checker must not report: the font library keeps its configuration for the whole process
/// behind pointers stored as offsets, which the checker cannot follow. The name is the checker's own.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}
// NOLINTEND(bugprone-reserved-identifier)
