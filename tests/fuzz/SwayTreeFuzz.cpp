#include "linux/windows/sway/SwayTree.h"

#include <cstdlib>

/// Any client's words stand in the answers. Whatever comes of one, it is no more than is allowed.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view answer(reinterpret_cast<const char*>(data), size);
    const auto tree = corvane::sway::readTree(answer);
    if (tree && tree->windows.size() > corvane::mostWindows) std::abort();
    corvane::sway::readPlaces(answer);
    corvane::sway::readMonitors(answer, answer);
    corvane::sway::readSuccess(answer);
    return 0;
}
