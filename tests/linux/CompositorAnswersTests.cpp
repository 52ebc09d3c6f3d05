#include "foundation/Text.h"
#include "linux/windows/AgentAnswers.h"
#include "linux/windows/WaylandSession.h"
#include "linux/windows/sway/SwayTree.h"
#include "linux/windows/sway/WorkspaceNames.h"
#include "windows/MemoryWindowSystem.h"

#include <sstream>

#include <gtest/gtest.h>

using namespace corvane;
using namespace corvane::sway;

namespace {

/// Process, title, hints, frame, workspace, kind and layer, and what holds of it.
std::string described(const ManagedWindow& it) {
    const auto& [application, instance, className, entry, sandbox] = it.hints;
    const auto& [origin, size] = it.frame;
    std::ostringstream text;
    text << it.window.process << ' ' << it.title.value_or("-") << ' ' << application << '|'
         << instance << '|' << className << '|' << entry << '|' << sandbox << ' ' << origin.x << ','
         << origin.y << ' ' << size.width << 'x' << size.height << " on " << it.workspace
         << " kind " << static_cast<int>(it.kind) << " layer " << static_cast<int>(it.layer);
    for (const auto& [isSo, word] : {std::pair(it.isOnScreen, " shown"),
                                     {it.isMinimized, " minimized"},
                                     {it.isFullscreen, " fullscreen"},
                                     {it.isMaximized, " maximized"},
                                     {it.isTiled, " tiled"},
                                     {it.skipsTaskbar, " skipped"},
                                     {it.canBeAskedToClose, " closeable"}})
        text << (isSo ? word : "");
    return text.str();
}

const std::string first = "{00000000-0000-4000-8000-0000000000a1}";
const std::string second = "{00000000-0000-4000-8000-0000000000b2}";

/// What an agent tells of a window: an editor's, but for what comes behind.
std::string window(const std::string& id, const std::string& different) {
    return different + (different.empty() ? "" : ",") + "\"id\":\"" + id +
           R"(","owner":null,"pid":7,"isXClient":false,"xNumber":0,"resourceName":"pad",)"
           R"("resourceClass":"org.pad","desktopFile":"pad","title":"T","kind":"ordinary","layer":0,)"
           R"("stacking":1,"frame":[[0.5,1],[401.333,2]],"workspace":"2","isOnScreen":true,)"
           R"("isMinimized":false,"isFullscreen":false,"isMaximized":false,"mayBeMaximized":false,)"
           R"("skipsTaskbar":false,"closeable":true)";
}

std::string answer(const std::string& windows, const std::string& active = "null") {
    return "{\"windows\":[" + windows + "],\"active\":" + active + '}';
}

std::string described(const ToldWindow& told) {
    return told.id.substr(35) + " " + described(told.window) +
           (told.owner ? " for " + told.owner->substr(35) : "") +
           (told.isXClient ? " X" + std::to_string(told.xNumber) : "") +
           (told.mayBeMaximized ? " large" : "");
}

TEST(AgentAnswersTest, tellsEveryWindow) {
    const std::pair<std::string, std::string> cases[]{
        {"", "a1} 7 T org.pad|||pad| 0.5,1 401.333x2 on 2 kind 0 layer 1 shown closeable"},
        {R"("isXClient":true,"xNumber":42,"owner":")" + second + '"',
         "a1} 7 T |pad|org.pad|pad| 0.5,1 401.333x2 on 2 kind 0 layer 1 shown closeable for b2} X42"},
        {R"("kind":"dock","layer":1,"pid":-1,"skipsTaskbar":true,"closeable":false,"workspace":"")",
         "a1} 0 T org.pad|||pad| 0.5,1 401.333x2 on  kind 1 layer 2 shown skipped"},
        {R"("applicationId":"org.Editor")",
         "a1} 7 T org.Editor||org.pad|pad| 0.5,1 401.333x2 on 2 kind 0 layer 1 shown closeable"},
        {R"("kind":"desktop","layer":-1,"isOnScreen":false,"isMinimized":true,"title":"")",
         "a1} 7  org.pad|||pad| 0.5,1 401.333x2 on 2 kind 2 layer 0 minimized closeable"},
        {R"("kind":"?","isFullscreen":true,"isMaximized":true,"mayBeMaximized":true,"title":")"
         "\xff\"",
         "a1} 7 \uFFFD org.pad|||pad| 0.5,1 401.333x2 on 2 kind 3 layer 1 shown fullscreen maximized "
         "closeable large"}};
    for (const auto& [different, expected] : cases) {
        const auto told = readWindows(answer('{' + window(first, different) + '}'));
        ASSERT_TRUE(told) << different;
        EXPECT_EQ(described(told->windows.at(0)), expected);
        EXPECT_FALSE(told->active);
    }
}

TEST(AgentAnswersTest, keepsTheOrderOfCreationAndTellsThatOfTheScreen) {
    const auto told = readWindows(answer('{' + window(first, "\"stacking\":5") + "},{" +
                                             window(second, "\"stacking\":3") + '}',
                                         '"' + second + '"'));
    ASSERT_TRUE(told);
    EXPECT_EQ(told->windows[0].id, first);
    EXPECT_EQ(told->stacking, (std::vector<std::size_t>{1, 0}));
    EXPECT_EQ(told->active, second);
}

TEST(AgentAnswersTest, makesNothingOfAnythingElse) {
    for (const std::string wrong :
         {R"("pid":"7")", R"("pid":1.5)", R"("frame":[[1,2],[3]])", R"("frame":[[1,2],[3,null]])",
          R"("owner":"a b")", R"("owner":"")", R"("title":null)", R"("isMinimized":0)",
          R"("stacking":"1")"})
        EXPECT_FALSE(readWindows(answer('{' + window(first, wrong) + '}'))) << wrong;
    for (const std::string wrong :
         {"", "null", "[]", "{}", R"({"windows":{}})", R"({"windows":[],"active":"one"})",
          R"({"windows":[],"error":"ReferenceError"})"})
        EXPECT_FALSE(readWindows(wrong)) << wrong;
    EXPECT_TRUE(readWindows(answer(""))->windows.empty());
}

TEST(XClientsTest, areWhatTheirServerVouchesFor) {
    constexpr pid_t compositor = 1;
    const auto shown = [](const std::string& title, pid_t process, std::uint64_t number = 0) {
        ManagedWindow window{.window = {number, process}, .title = title};
        window.hints.className = "Eyes";
        window.canBeAskedToClose = true;
        return window;
    };
    MemoryWindowSystem server;
    server.session = {compositor};
    for (const auto& each : {shown("one", 11, 5), shown("two", 12, 6), shown("two", 13, 7),
                             shown("unknown", 0, 8), shown("four", 14, 9)})
        server.show(each);
    std::vector<ManagedWindow> told{shown("one", 0),     shown("two", 0),  shown("else", 11),
                                    shown("unknown", 0), shown("lies", 2), shown("four", 4),
                                    shown("lies", 0)};
    told.push_back(shown("named itself", 14));
    told.back().hints.className = "Pad";
    std::vector<XClient> clients;
    for (auto& each : told)
        clients.push_back({&each, 0});
    clients[6].number = 6;
    const auto outcome = [&](pid_t who) {
        EXPECT_TRUE(checkXClients(clients, &server, who, halfASecondFromNow()));
        std::string all;
        for (const auto& each : told)
            all += *each.title + " " + std::to_string(each.window.process) +
                   (each.canBeAskedToClose ? "; " : " unaskable; ");
        return all;
    };
    EXPECT_EQ(outcome(compositor),
              "one 11; two 0 unaskable; else 11; unknown 0; "
              "lies 0 unaskable; four 14; lies 12; named itself 0 unaskable; ");
    EXPECT_EQ(outcome(compositor + 1),
              "one 0 unaskable; two 0 unaskable; else 0 unaskable; unknown 0 unaskable; "
              "lies 0 unaskable; four 0 unaskable; lies 0 unaskable; named itself 0 unaskable; ");
}

std::string rect(const std::string& numbers) {
    const auto n = text::split(numbers, ' ');
    return "{\"x\":" + n[0] + ",\"y\":" + n[1] + ",\"width\":" + n[2] + ",\"height\":" + n[3] + "}";
}

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
        text << shown.window.number << '/' << described(shown) << " of " << area.size.width;
        if (xWindow) text << " X" << xWindow;
        if (shown.owner) text << " for " << *shown.owner;
        text << (tree.active == shown.window.number ? " active\n" : "\n");
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
    const std::map<std::uint64_t, PlaceInTree> places{{31, {Arrangement::tiled, "1"}},
                                                      {41, {Arrangement::floating, "1"}},
                                                      {71, {Arrangement::scratchpad, ""}}};
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
    const auto one = node(4, "workspace", "0 30 1440 870", R"(,"name":"1","focus":[9,6,10])", split,
                          x11 + ',' + tool);
    const auto two = node(5, "workspace", "-640 -360 640 360",
                          R"(,"name":"2: web","focus":[11,12])", film + ',' + pane);
    const auto scratch =
        node(3, "workspace", "0 0 1440 900", R"(,"name":"__i3_scratch")", "", away);
    const auto root =
        node(1, "root", "0 0 0 0", R"(,"name":"root","focus":[2,20,21])",
             node(2, "output", "0 0 1440 900", R"(,"name":"A","focus":[4])", one) + ',' +
                 node(20, "output", "-640 -360 640 360", R"(,"name":"B","focus":[5])", two) + ',' +
                 node(21, "output", "0 0 0 0", R"(,"name":"__i3")", scratch));
    const auto tree = readTree(root);
    ASSERT_TRUE(tree);
    EXPECT_EQ(
        described(*tree),
        "13/1013 a a|||| 9,9 9x9 on  kind 0 layer 1 minimized closeable of 1440\n"
        "12/1012 p p|||| -640,-360 640x360 on 2: web kind 0 layer 1 shown tiled closeable "
        "of 640 active\n"
        "11/1011 \uFFFD mpv|||| -640,-360 640x360 on 2: web kind 0 layer 1 shown fullscreen "
        "tiled closeable of 640\n"
        "8/1008 - |||| 640,25 800x875 on 1 kind 0 layer 1 tiled closeable of 1440\n"
        "7/1007 ~ foot|||| 0,0 640x900 on 1 kind 0 layer 1 shown tiled closeable of 1440\n"
        "9/1009 Save? |pad|Pad|| 100,200 500x400 on 1 kind 0 layer 1 shown closeable of 1440 "
        "X42 for 10\n"
        "10/1010 T |pad|Pad||org.pad 1,2 3x4 on 1 kind 3 layer 1 shown closeable of 1440 X43\n");
    const std::pair<std::string, const char*> faults[]{
        {"\"pid\":1007", "\"pid\":-1"},         {"\"pid\":1007", "\"pid\":1.5"},
        {"\"pid\":1007", "\"pid\":4294967296"}, {"\"id\":7", "\"id\":\"7\""},
        {"\"nodes\":[]", "\"nodes\":{}"},       {"\"floating_nodes\":[]", "\"x\":0"},
        {"\"type\":\"root\"", "\"type\":null"}, {"\"visible\":true", "\"visible\":1"},
        {"\"width\":640", "\"width\":null"},    {"}", ""},
    };
    for (const auto& [what, instead] : faults) {
        auto broken = root;
        broken.replace(broken.find(what), what.size(), instead);
        EXPECT_FALSE(readTree(broken)) << what << " as " << instead;
    }
}

TEST(SwayTreeTest, tellsWhatBarsLeaveOfOutputsThatAreOn) {
    const auto outputs = R"([{"name":"A","active":true,"rect":)" + rect("0 0 1440 900") +
                         R"(},{"name":"B","active":true,"rect":)" + rect("-640 0 640 360") +
                         R"(},{"name":"C","active":false,"rect":)" + rect("0 0 0 0") + "}]";
    const auto workspaces = R"([{"output":"A","visible":false,"rect":)" + rect("0 0 1440 900") +
                            R"(},{"output":"A","visible":true,"rect":)" + rect("0 30 1440 870") +
                            "}]";
    using Monitors = std::vector<Monitor>;
    const Monitors expected{{{{0, 0}, {1440, 900}}, {{0, 30}, {1440, 870}}},
                            {{{-640, 0}, {640, 360}}, {{-640, 0}, {640, 360}}}};
    EXPECT_EQ(readMonitors(outputs, workspaces), expected);
    EXPECT_EQ(readMonitors(outputs, "{}"), std::nullopt);
    EXPECT_EQ(readMonitors("[1]", workspaces), std::nullopt);
}

TEST(SwayTreeTest, movesToAWorkspaceWhoseNameIsNoCommand) {
    const std::string longest(100, 'x');
    for (const auto* name :
         {"1", "10: web", "mail", "nextcloud", "a_b-c.d", "\uF120", "3:\u00E9", longest.c_str()})
        EXPECT_EQ(movingToWorkspace("[con_id=1] ", name).value_or("refused"),
                  "[con_id=1] move --no-auto-back-and-forth container to workspace \"" +
                      std::string(name) + '"');
    EXPECT_FALSE(movingToWorkspace("", longest + 'x'));
    for (const auto& name : text::split("| | 1|-x|1;kill|1,kill|1\nkill|a\"b|a'b|[x]|$x|a\\b|(x)|"
                                        "__i3_scratch|number|Next|prev|prev_on_output|"
                                        "next_on_output|current|back_and_forth",
                                        '|'))
        EXPECT_FALSE(movingToWorkspace("", name)) << name;
}

TEST(SwayTreeTest, tellsWhetherEveryCommandWasDone) {
    EXPECT_TRUE(readSuccess(R"([{"success":true},{"success":true}])"));
    for (const auto* answer : {R"([{"success":true},{"success":false}])", R"([{}])", "", "[1"})
        EXPECT_FALSE(readSuccess(answer)) << answer;
}

} // namespace
