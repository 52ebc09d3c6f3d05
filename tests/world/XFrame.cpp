#include "world/XFrame.h"

#include <sstream>
#include <vector>

namespace corvane::world {
namespace {

/// The numbers that follow a word of a command's output, with one character between each.
std::vector<int> numbersBehind(const std::string& output, const std::string& word) {
    std::vector<int> numbers;
    const auto place = output.find(word);
    if (place == std::string::npos) return numbers;
    std::istringstream words(output.substr(place + word.size()));
    for (int number = 0; words >> number; words.ignore())
        numbers.push_back(number);
    return numbers;
}

} // namespace

std::string frameQuestion(const std::string& xWindow) {
    return "LC_ALL=C xwininfo -id " + xWindow + "; LC_ALL=C xprop -notype -id " + xWindow +
           " _NET_FRAME_EXTENTS _GTK_FRAME_EXTENTS _NET_WM_STATE";
}

std::string visibleFrame(const std::string& told) {
    const auto left = numbersBehind(told, "Absolute upper-left X:");
    const auto top = numbersBehind(told, "Absolute upper-left Y:");
    const auto width = numbersBehind(told, "Width:");
    const auto height = numbersBehind(told, "Height:");
    if (left.empty() || top.empty() || width.empty() || height.empty()) return "";
    auto around = numbersBehind(told, "_NET_FRAME_EXTENTS =");
    const auto shadow = numbersBehind(told, "_GTK_FRAME_EXTENTS =");
    around.resize(4);
    for (std::size_t i = 0; i < shadow.size(); ++i)
        around[i] -= shadow[i];
    // The border is the client's own, which i3 leaves it.
    const int border = numbersBehind(told, "Border width:").at(0);
    std::ostringstream frame;
    frame << left[0] + border - around[0] << "," << top[0] + border - around[2] << " "
          << width[0] + around[0] + around[1] << "x" << height[0] + around[2] + around[3];
    return frame.str();
}

} // namespace corvane::world
