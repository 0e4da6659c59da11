/// What the leak checker must not report: the font library keeps its configuration for the whole process
/// behind pointers stored as offsets, which the checker cannot follow.
extern "C" const char* __lsan_default_suppressions();

// NOLINTNEXTLINE(bugprone-reserved-identifier): the checker's own name for it.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}
