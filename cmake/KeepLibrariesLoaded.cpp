// Part of sanitizer builds only. LeakSanitizer takes what a library still holds for lost when the
// toolkit has unloaded that library at the end of the program. So none is unloaded.
extern "C" int dlclose(void*) {
    return 0;
}

// Of the pictures that are shown when the last window goes, the toolkit's software renderer never
// lets the textures go. Nor does its part for Wayland let go of what stands for the compositor's
// objects.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:QSGTexture::QSGTexture\nleak:libwayland-client.so\n";
}
