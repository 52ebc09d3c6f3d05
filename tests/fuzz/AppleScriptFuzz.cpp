#include "fuzz/Fuzz.h"
#include "linux/scripts/AppleScript.h"

void feed(std::string_view text) {
    const auto script = corvane::applescript::parse(text);
    expect(script || !script.error().localizedDescription.empty());
}
