// Part of sanitizer builds only. LeakSanitizer takes what a library still holds for lost when the
// toolkit has unloaded that library at the end of the program. So none is unloaded.
extern "C" int dlclose(void*) {
    return 0;
}
