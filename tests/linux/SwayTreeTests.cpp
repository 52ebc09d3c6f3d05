#include "linux/windows/sway/SwayTree.h"

#include <sstream>

#include <gtest/gtest.h>

namespace corvane::sway {
namespace {

std::string rect(const std::string& numbers) {
    std::istringstream words(numbers);
    double x = 0, y = 0, width = 0, height = 0;
    words >> x >> y >> width >> height;
    std::ostringstream text;
    text << R"({"x":)" << x << R"(,"y":)" << y << R"(,"width":)" << width << R"(,"height":)"
         << height << '}';
    return text.str();
}

/// A node with what all have, and more.
std::string node(int id, const std::string& type, const std::string& frame, const std::string& more,
                 const std::string& tiled = "", const std::string& floating = "") {
    return "{\"id\":" + std::to_string(id) + ",\"type\":\"" + type + "\",\"rect\":" + rect(frame) +
           ",\"focused\":false,\"nodes\":[" + tiled + "],\"floating_nodes\":[" + floating + "]" +
           more + '}';
}

std::string window(int id, const std::string& type, const std::string& frame, int titleBar,
                   const std::string& more) {
    return node(id, type, frame,
                ",\"pid\":" + std::to_string(1000 + id) +
                    ",\"deco_rect\":" + rect("0 0 0 " + std::to_string(titleBar)) + more);
}

std::string described(const Tree& tree) {
    std::ostringstream text;
    for (const auto& [shown, xWindow, area] : tree.windows) {
        const auto& [origin, size] = shown.frame;
        text << shown.window.number << '/' << shown.window.process << ' '
             << shown.title.value_or("-") << ' ' << shown.hints.applicationId << '|'
             << shown.hints.instanceName << '|' << shown.hints.className << '|'
             << shown.hints.sandboxId << ' ' << origin.x << ',' << origin.y << ' ' << size.width
             << 'x' << size.height << " on " << shown.workspace << " of " << area.size.width;
        if (xWindow) text << " X" << xWindow;
        if (shown.owner) text << " for " << *shown.owner;
        for (const auto& [isSo, word] : {std::pair(shown.isOnScreen, " shown"),
                                         {shown.isMinimized, " minimized"},
                                         {shown.isFullscreen, " fullscreen"},
                                         {shown.isTiled, " tiled"},
                                         {shown.kind != WindowKind::ordinary, " other"},
                                         {tree.active == shown.window.number, " active"}}) {
            if (isSo) text << word;
        }
        text << '\n';
    }
    return text.str();
}

TEST(SwayTreeTest, tellsWhereI3HasItsWindows) {
    const auto con = [](int id, int xWindow) {
        return node(id, "con", "0 0 9 9",
                    ",\"window\":" + (xWindow ? std::to_string(xWindow) : "null"));
    };
    const auto floating = [&](int id, int xWindow) {
        return node(id, "floating_con", "0 0 9 9", ",\"window\":null", con(id + 1, xWindow));
    };
    const auto tree =
        node(1, "root", "0 0 9 9", "",
             node(2, "workspace", "0 0 9 9", R"(,"name":"1")", con(3, 31), floating(4, 41)) + "," +
                 node(6, "workspace", "0 0 9 9", R"(,"name":"__i3_scratch")", "", floating(7, 71)));
    const std::map<std::uint64_t, PlaceInTree> places{
        {31, PlaceInTree::tiled}, {41, PlaceInTree::floating}, {71, PlaceInTree::scratchpad}};
    EXPECT_EQ(readPlaces(tree), places);
    EXPECT_FALSE(readPlaces("{}"));
}

TEST(SwayTreeTest, tellsEveryWindowAsAPersonSeesIt) {
    const auto term = window(7, "con", "0 25 640 875", 25,
                             R"(,"name":"~","app_id":"foot","visible":true,"fullscreen_mode":0)");
    const auto tab = window(8, "con", "640 50 800 850", 25,
                            R"(,"name":null,"app_id":"","visible":false,"fullscreen_mode":0)");
    const auto x11 = window(
        9, "floating_con", "100 225 500 375", 25,
        R"(,"name":"Save?","window":42,"app_id":null,"visible":true,"fullscreen_mode":0,)"
        R"("window_properties":{"class":"Pad","instance":"pad","window_type":"dialog","transient_for":43})");
    const auto tool = window(
        10, "floating_con", "1 2 3 4", 0,
        R"(,"name":"T","window":43,"visible":true,"fullscreen_mode":0,"sandbox_app_id":"org.pad",)"
        R"("window_properties":{"class":"Pad","instance":"pad","window_type":"utility","transient_for":null})");
    const auto film =
        window(11, "con", "-640 -360 640 360", 0,
               "\n,\"name\":\"\xff\",\"app_id\":\"mpv\",\"visible\":true,\"fullscreen_mode\":1");
    auto pane = window(12, "con", "-640 -335 640 335", 25,
                       R"(,"name":"p","app_id":"p","visible":false,"fullscreen_mode":0)");
    pane.replace(pane.find("\"focused\":false"), 15, "\"focused\":true");
    const auto away = window(13, "floating_con", "9 9 9 9", 0,
                             R"(,"name":"a","app_id":"a","visible":false,"fullscreen_mode":0)");
    const auto split =
        node(6, "con", "0 0 1440 900", R"(,"name":null,"focus":[7,8])", term + ',' + tab);
    const auto first = node(4, "workspace", "0 30 1440 870", R"(,"name":"1","focus":[9,6,10])",
                            split, x11 + ',' + tool);
    const auto second = node(5, "workspace", "-640 -360 640 360",
                             R"(,"name":"2: web","focus":[11,12])", film + ',' + pane);
    const auto scratch =
        node(3, "workspace", "0 0 1440 900", R"(,"name":"__i3_scratch")", "", away);
    const auto root =
        node(1, "root", "0 0 0 0", R"(,"name":"root","focus":[2,20,21])",
             node(2, "output", "0 0 1440 900", R"(,"name":"A","focus":[4])", first) + ',' +
                 node(20, "output", "-640 -360 640 360", R"(,"name":"B","focus":[5])", second) +
                 ',' + node(21, "output", "0 0 0 0", R"(,"name":"__i3")", scratch));
    const auto tree = readTree(root);
    ASSERT_TRUE(tree);
    EXPECT_EQ(described(*tree),
              "13/1013 a a||| 9,9 9x9 on  of 1440 minimized\n"
              "12/1012 p p||| -640,-360 640x360 on 2: web of 640 shown tiled active\n"
              "11/1011 \uFFFD mpv||| -640,-360 640x360 on 2: web of 640 shown fullscreen tiled\n"
              "8/1008 - ||| 640,25 800x875 on 1 of 1440 tiled\n"
              "7/1007 ~ foot||| 0,0 640x900 on 1 of 1440 shown tiled\n"
              "9/1009 Save? |pad|Pad| 100,200 500x400 on 1 of 1440 X42 for 10 shown\n"
              "10/1010 T |pad|Pad|org.pad 1,2 3x4 on 1 of 1440 X43 shown other\n");
    for (const auto& [what, instead] : {std::pair("\"pid\":1007", "\"pid\":-1"),
                                        {"\"pid\":1007", "\"pid\":1.5"},
                                        {"\"pid\":1007", "\"pid\":4294967296"},
                                        {"\"id\":7", "\"id\":\"7\""},
                                        {"\"nodes\":[]", "\"nodes\":{}"},
                                        {"\"floating_nodes\":[]", "\"x\":0"},
                                        {"\"type\":\"root\"", "\"type\":null"},
                                        {"\"visible\":true", "\"visible\":1"},
                                        {"\"width\":640", "\"width\":null"},
                                        {"}", ""}}) {
        auto broken = root;
        broken.replace(broken.find(what), std::string(what).size(), instead);
        EXPECT_FALSE(readTree(broken)) << what << " as " << instead;
    }
}

TEST(SwayTreeTest, tellsWhatBarsLeaveOfOutputsThatAreOn) {
    const auto output = [](const std::string& name, const std::string& frame, bool active) {
        return "{\"name\":\"" + name + "\",\"active\":" + (active ? "true" : "false") +
               ",\"rect\":" + rect(frame) + '}';
    };
    const auto workspace = [](const std::string& on, const std::string& area, bool visible) {
        return "{\"output\":\"" + on + "\",\"visible\":" + (visible ? "true" : "false") +
               ",\"rect\":" + rect(area) + '}';
    };
    const auto outputs = '[' + output("A", "0 0 1440 900", true) + ',' +
                         output("B", "-640 0 640 360", true) + ',' + output("C", "0 0 0 0", false) +
                         ']';
    const auto workspaces = '[' + workspace("A", "0 0 1440 900", false) + ',' +
                            workspace("A", "0 30 1440 870", true) + ']';
    using Monitors = std::vector<Monitor>;
    const Monitors expected{{{{0, 0}, {1440, 900}}, {{0, 30}, {1440, 870}}},
                            {{{-640, 0}, {640, 360}}, {{-640, 0}, {640, 360}}}};
    EXPECT_EQ(readMonitors(outputs, workspaces), expected);
    EXPECT_EQ(readMonitors(outputs, "{}"), std::nullopt);
    EXPECT_EQ(readMonitors("[1]", workspaces), std::nullopt);
}

TEST(SwayTreeTest, tellsWhetherEveryCommandWasDone) {
    EXPECT_TRUE(readSuccess(R"([{"success":true},{"success":true}])"));
    for (const auto* answer :
         {R"([{"success":true},{"success":false,"error":"No matching node."}])", R"([{}])", "",
          "[1"})
        EXPECT_FALSE(readSuccess(answer)) << answer;
}

} // namespace
} // namespace corvane::sway
