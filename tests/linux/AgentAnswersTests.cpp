#include "linux/windows/AgentAnswers.h"
#include "linux/windows/WaylandSession.h"
#include "windows/MemoryWindowSystem.h"

#include <sstream>

#include <gtest/gtest.h>

namespace corvane {
namespace {

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
    const auto& shown = told.window;
    const auto& [origin, size] = shown.frame;
    std::ostringstream text;
    text << told.id.substr(35) << ' ' << shown.window.process << ' ' << shown.title.value_or("-")
         << ' ' << shown.hints.applicationId << '|' << shown.hints.instanceName << '|'
         << shown.hints.className << '|' << shown.hints.desktopFile << ' ' << origin.x << ','
         << origin.y << ' ' << size.width << 'x' << size.height << " on " << shown.workspace
         << " kind " << static_cast<int>(shown.kind) << " layer " << static_cast<int>(shown.layer);
    if (told.owner) text << " for " << told.owner->substr(35);
    if (told.isXClient) text << " X" << told.xNumber;
    for (const auto& [isSo, word] : {std::pair(shown.isOnScreen, " shown"),
                                     {shown.isMinimized, " minimized"},
                                     {shown.isFullscreen, " fullscreen"},
                                     {shown.isMaximized, " maximized"},
                                     {told.mayBeMaximized, " large"},
                                     {shown.skipsTaskbar, " skipped"},
                                     {shown.canBeAskedToClose, " closeable"}}) {
        if (isSo) text << word;
    }
    return text.str();
}

TEST(AgentAnswersTest, tellsEveryWindow) {
    const std::pair<std::string, std::string> cases[]{
        {"", "a1} 7 T org.pad|||pad 0.5,1 401.333x2 on 2 kind 0 layer 1 shown closeable"},
        {R"("isXClient":true,"xNumber":42,"owner":")" + second + '"',
         "a1} 7 T |pad|org.pad|pad 0.5,1 401.333x2 on 2 kind 0 layer 1 for b2} X42 shown closeable"},
        {R"("kind":"dock","layer":1,"pid":-1,"skipsTaskbar":true,"closeable":false,"workspace":"")",
         "a1} 0 T org.pad|||pad 0.5,1 401.333x2 on  kind 1 layer 2 shown skipped"},
        {R"("applicationId":"org.Editor")",
         "a1} 7 T org.Editor||org.pad|pad 0.5,1 401.333x2 on 2 kind 0 layer 1 shown closeable"},
        {R"("kind":"desktop","layer":-1,"isOnScreen":false,"isMinimized":true,"title":"")",
         "a1} 7  org.pad|||pad 0.5,1 401.333x2 on 2 kind 2 layer 0 minimized closeable"},
        {R"("kind":"?","isFullscreen":true,"isMaximized":true,"mayBeMaximized":true,"title":")"
         "\xff\"",
         "a1} 7 \uFFFD org.pad|||pad 0.5,1 401.333x2 on 2 kind 3 layer 1 shown fullscreen maximized "
         "large closeable"}};
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

TEST(AgentAnswersTest, tellsMonitors) {
    const auto told = readMonitors(
        R"({"monitors":[{"frame":[[0,0],[1440,900]],"workArea":[[0,30],[1440,869.5]]}]})");
    const std::vector<Monitor> expected{{{{0, 0}, {1440, 900}}, {{0, 30}, {1440, 869.5}}}};
    EXPECT_EQ(told, expected);
    EXPECT_FALSE(readMonitors(R"({"monitors":[{"frame":[[0,0],[1,1]]}]})"));
}

/// Title, class and process as the X server and as the compositor tell them, and what comes of it.
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
              "lies 0 unaskable; four 0 unaskable; lies 0 unaskable; named itself 0 unaskable; ")
        << "another session's";
}

} // namespace
} // namespace corvane
