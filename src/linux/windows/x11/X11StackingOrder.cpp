#include "linux/windows/x11/X11StackingOrder.h"

#include <algorithm>
#include <map>

namespace corvane::x11 {
namespace {

/// Frames are children of the root window, and clients are in frames in one or two steps.
constexpr int deepest = 4;

std::vector<Reply<xcb_query_tree_reply_t>>
treesOf(Server& server, const std::vector<xcb_window_t>& windows, Deadline deadline) {
    std::vector<xcb_query_tree_cookie_t> cookies;
    for (const auto window : windows)
        cookies.push_back(xcb_query_tree(server.get(), window));
    std::vector<Reply<xcb_query_tree_reply_t>> trees;
    for (const auto cookie : cookies)
        trees.push_back(server.reply<xcb_query_tree_reply_t>(cookie, deadline));
    return trees;
}

} // namespace

std::vector<xcb_window_t> bottomToTop(Server& server, const std::vector<xcb_window_t>& windows,
                                      Deadline deadline) {
    std::map<xcb_window_t, int> places;
    const auto roots = treesOf(server, {server.root()}, deadline);
    if (roots.front()) {
        const auto* child = xcb_query_tree_children(roots.front().get());
        const int count = xcb_query_tree_children_length(roots.front().get());
        for (int place = 0; place < count; ++place)
            places[child[place]] = place;
    }
    auto ancestors = windows;
    for (int step = 0; step < deepest; ++step) {
        const auto trees = treesOf(server, ancestors, deadline);
        for (std::size_t i = 0; i < ancestors.size(); ++i) {
            if (trees[i] && trees[i]->parent != server.root() && trees[i]->parent != XCB_NONE) {
                ancestors[i] = trees[i]->parent;
            }
        }
    }
    std::vector<std::pair<int, xcb_window_t>> ordered;
    for (std::size_t i = 0; i < windows.size(); ++i)
        ordered.emplace_back(places[ancestors[i]], windows[i]);
    std::ranges::stable_sort(ordered, {}, &std::pair<int, xcb_window_t>::first);
    std::vector<xcb_window_t> result;
    for (const auto& [place, window] : ordered)
        result.push_back(window);
    return result;
}

} // namespace corvane::x11
