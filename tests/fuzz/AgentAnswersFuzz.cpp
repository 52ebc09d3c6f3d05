#include "linux/windows/AgentAnswers.h"

#include <cstdlib>

/// Any process of the session can load scripts that answer in ours' place, and any client's words
/// stand in the answers. Whatever comes of one, it is no more than is allowed.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view answer(reinterpret_cast<const char*>(data), size);
    const auto told = corvane::readWindows(answer);
    if (told && told->windows.size() > corvane::mostWindows) std::abort();
    if (told && told->stacking.size() != told->windows.size()) std::abort();
    corvane::readMonitors(answer);
    return 0;
}
