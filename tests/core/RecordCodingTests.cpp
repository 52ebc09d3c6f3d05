#include "core/StoreScene.h"
#include "foundation/Json.h"

#include <limits>

using namespace corvane;

namespace {

constexpr auto resourceJson =
    R"({"id":"0e0f6a53-6c1a-4a6e-9d6e-2f1a3b4c5d6e","name":"Plan","path":"\/home\/me\/plan.md","type":"file",)"
    R"("associatedApps":["Writer","Writer"]})";

constexpr auto layoutsJson =
    R"(,"savedWindowLayouts":[{"appName":"A","frame":[[0,0],[1,2]],"ownerPID":0,"recordedAt":1}])";

std::string workspaceJson(const std::string& resources, const std::string& more = "") {
    return R"([{"id":"7C9E6679-7425-40DE-944B-E07FC1F90AE7","name":"Work","description":"","icon":"briefcase","resources":[)" +
           resources + R"(],"dateCreated":757382400,"dateModified":757382400.5)" + more + "}]";
}

/// The elements of all.
std::string listOf(const std::vector<std::string>& lists) {
    std::vector<std::string> elements;
    for (const auto& list : lists)
        elements.push_back(list.substr(1, list.size() - 2));
    return "[" + text::joined(elements, ",") + "]";
}

struct RecordCoding : SceneTest {
    std::vector<Workspace> decode(std::string_view json) {
        return decodeWorkspaces(json, platform.bundles);
    }
    std::string errorOf(std::string_view json) {
        try {
            decode(json);
            return "no error";
        } catch (const json::DecodeError& error) {
            return error.what();
        }
    }
};

TEST_F(RecordCoding, aBadValueFailsTheWholeTextAndTheErrorNamesItsPlace) {
    const std::pair<std::string, std::string> texts[]{
        {"", "not valid JSON"},
        {"[", "not valid JSON"},
        {"[]x", "not valid JSON"},
        {std::string("[]\0[]", 5), "not valid JSON"},
        {workspaceJson("\"\\ud800\""), "not valid JSON"},
        {"[\n  {\"id\": \"\xff\"}]", "not UTF-8 at line 2, column 11"},
        {"{}", "workspaces: an array was expected"},
        {"[1,2,{}]", "workspaces[0]: an object was expected"},
        {listOf({workspaceJson(""), "[null, true]"}), "workspaces[1]: an object was expected"},
        {listOf({workspaceJson(""), workspaceJson(""), workspaceJson("{}")}),
         "workspaces[2].resources[0]: \"id\" is missing"},
        {std::string(64, '[') + std::string(64, ']'), "workspaces[0]: an object was expected"},
        {std::string(65, '['), "not valid JSON (More than 64 levels.) at line 1, column 65"}};
    for (const auto& [json, error] : texts)
        EXPECT_NE(errorOf(json).find(error), std::string::npos) << json << "\n" << errorOf(json);

    const auto good = workspaceJson(resourceJson, layoutsJson);
    EXPECT_EQ(errorOf(good), "no error");
    const std::string first = ".resources[0]", window = ".savedWindowLayouts[0]";
    const std::string noNumber = ": a number was expected", noText = ": a text was expected",
                      noArray = ": an array was expected", noFlag = ": true or false was expected",
                      noInteger = ": an integer that fits was expected";
    const std::tuple<const char*, const char*, std::string> changes[]{
        {"\"resources\"", "\"others\"", ": \"resources\" is missing"},
        {"\"Work\"", "null", ": \"name\" is null"},
        {"757382400,", "\"2025-01-01T00:00:00Z\",", ".dateCreated" + noNumber},
        {"7C9E6679-", "7C9E667-",
         ".id: \"7C9E667-7425-40DE-944B-E07FC1F90AE7\" is not an identifier"},
        {"\"resources\":", "\"resources\":{},\"others\":", ".resources" + noArray},
        {"\"file\"", "\"File\"", first + ".type: \"File\" is not a resource type"},
        {"\"Plan\"", "3", first + ".name" + noText},
        {"\"Plan\"", "\"a\\udcda\"", first + ".name: the text has half a surrogate pair"},
        {"\"Writer\"]", "null]", first + ".associatedApps[1]" + noText},
        {"\"Plan\"", "\"\",\"enabled\":1", first + ".enabled" + noFlag},
        {"\"Plan\"", "\"\",\"bookmarkData\":\"a\"",
         first + ".bookmarkData: a base64 text was expected"},
        {"[[0,0],[1,2]]", "{\"x\":0}", window + ".frame" + noArray},
        {"[[0,0],[1,2]]", "[0,0,1,2]", window + ".frame: [[x, y], [width, height]] was expected"},
        {"[1,2]", "[1,true]", window + ".frame[1][1]" + noNumber},
        {"PID\":0", "PID\":2147483648", window + ".ownerPID" + noInteger},
        {"PID\":0", "PID\":0.5", window + ".ownerPID" + noInteger},
        {"\"A\"", "\"A\",\"screenIndex\":1e30", window + ".screenIndex" + noInteger}};
    for (const auto& [from, to, error] : changes) {
        const auto said = errorOf(text::replacingAll(good, from, to));
        EXPECT_NE(said.find("workspaces[0]" + error), std::string::npos) << to << "\n" << said;
    }
}

TEST_F(RecordCoding, numbersReadAsTheNearestOnes) {
    const auto with = [](const std::string& number) {
        return text::replacingAll(workspaceJson(""), "757382400.5", number);
    };
    const std::pair<const char*, double> cases[]{
        {"0e-300", 0},
        {"-0.0e-25", 0},
        {"0E30", 0},
        {"1e-400", 0},
        {"1e-324", 0},
        {"4e-324", std::numeric_limits<double>::denorm_min()},
        {"2.2250738585072011e-308", 2.2250738585072011e-308},
        {"1.7976931348623157e308", std::numeric_limits<double>::max()},
        {"-9223372036854775809", -0x1p63},
        {"123456789012345678901234567890", 123456789012345678901234567890.0},
        {"9007199254740993.0", 9007199254740992.0},
        {"0.1e1", 1}};
    for (const auto& [number, expected] : cases)
        EXPECT_EQ(decode(with(number))[0].dateModified.seconds, expected) << number;
    for (const auto* number : {"1e309", "-1e400", "1e5000", "1e99999999999"})
        EXPECT_EQ(errorOf(with(number)), "workspaces[0].dateModified: the number is too large");
    // Where nobody looks it may stand.
    const auto read =
        decode(text::replacingAll(workspaceJson(""), R"("name":"Work")",
                                  R"("next":{"of":[1e400,-1.5E+999, )" + std::string(400, '7') +
                                      R"(]},"name":"\\\" 1e400")"));
    EXPECT_EQ(read[0].name, "\\\" 1e400");
    EXPECT_EQ(read[0].savedWindowLayouts, std::nullopt);
    // What was read before it isn't read twice.
    const auto named = [](const std::string& name) {
        return text::replacingAll(workspaceJson(""), "Work", name);
    };
    const auto some =
        decode(listOf({named("1"), named("2\",\"x\":\"3\",\"y\":-1e400,\"z\":\""), named("4")}));
    ASSERT_EQ(some.size(), 3u);
    EXPECT_EQ(some[0].name + some[1].name + some[2].name, "124");
    for (const auto* number : {"1e400e5", "01", "1.", ".5", "+1", "1e", "0x1", "NaN", "-Infinity"})
        EXPECT_NE(errorOf(with(number)).find("not valid JSON"), std::string::npos) << number;
}

/// The pretty-printed form of the platform that earlier versions ran on, saved again by an editor.
TEST_F(RecordCoding, aFileFromAnotherMachineReads) {
    const std::string foreign = "\xEF\xBB\xBF[\r\n"
                                R"(  {
    "schema" : { "version" : [1, { "deep" : null }] },
    "resources" : [
      {
        "bookmarkData" : "Ym9vayEDAAA=", "isFavourite" : true, "enabled" : null, "name" : "Safari",
        "associatedApps" : [ "Safari", "\u00c9diteur \ud83d\udcda" ], "type" : "application",
        "path" : "\/Applications\/Safari.app", "id" : "1b4e28ba-2fa1-11d2-883f-b9a761bde3fb"
      },
      { "id" : "2B4E28BA-2fa1-11D2-883F-B9A761BDE3FB", "name" : "", "path" : "", "type" : "separator", "associatedApps" : [], "enabled" : false }
    ],
    "savedWindowLayouts" : [
      { "frame" : [ [ -1440, 25.5 ], [ 1e3, 0.10000000000000001 ] ], "ownerPID" : -1, "appName" : "Safari",
        "recordedAt" : 7.573824E8, "windowTitle" : null, "screenIndex" : 1.0, "title" : "legacy" }
    ],
    "dateCreated" : 694267200.123, "dateModified" : -1, "name" : "Home", "icon" : "house", "description" : "a\/b",
    "id" : "3B4E28BA-2FA1-11D2-883F-B9A761BDE3FB", "hasLayoutSaved" : null, "projects" : []
  }
]
)";
    const auto read = decode(foreign);
    EXPECT_EQ(
        encodeWorkspaces(read),
        R"([{"id":"3B4E28BA-2FA1-11D2-883F-B9A761BDE3FB","name":"Home","description":"a/b","icon":"house","resources":[)"
        R"({"id":"1B4E28BA-2FA1-11D2-883F-B9A761BDE3FB","name":"Safari","path":"/Applications/Safari.app","type":"application",)"
        R"("associatedApps":["Safari","Éditeur 📚"],"enabled":true,"launchOnStart":false},)"
        R"({"id":"2B4E28BA-2FA1-11D2-883F-B9A761BDE3FB","name":"","path":"","type":"separator","associatedApps":[],)"
        R"("enabled":false,"launchOnStart":false}],"dateCreated":694267200.123,"dateModified":-1.0,"hasLayoutSaved":false,)"
        R"("savedWindowLayouts":[{"appName":"Safari","frame":[[-1440.0,25.5],[1000.0,0.1]],"ownerPID":-1,)"
        R"("recordedAt":757382400.0,"isFullscreen":false,"screenIndex":1,"isOnPrimaryScreen":true}]}])");
    EXPECT_EQ(read[0].resources[0].bookmarkData->size(), 8u);
    EXPECT_EQ(read[0].resources[1].bookmarkData, std::nullopt);
    EXPECT_EQ(errorOf("\xEF\xBB\xBF[\n{]"), errorOf("[\n{]"));
    EXPECT_NE(errorOf(std::string("\xff\xfe[\0]\0", 6)).find("not UTF-8 at line 1, column 1"),
              std::string::npos);
}

TEST_F(RecordCoding, whatIsWrittenReadsAsTheSameAndOldBookmarksLeaveTheFile) {
    const std::string written =
        R"([{"id":"7C9E6679-7425-40DE-944B-E07FC1F90AE7","name":"Work","description":"d","icon":"briefcase","resources":[)"
        R"({"id":"0E0F6A53-6C1A-4A6E-9D6E-2F1A3B4C5D6E","name":"“Plän”\n\t\\","path":"/Applications/Pad.app","type":"application",)"
        R"("associatedApps":["Writer","Writer"],"enabled":true,"launchOnStart":true,"bundleIdentifier":"org.pad"}],)"
        R"("dateCreated":757382400.0,"dateModified":757382400.5,"hasLayoutSaved":true,"savedWindowLayouts":[)"
        R"({"appName":"A","windowTitle":"T","frame":[[-1440.25,0.0],[0.1,1e-300]],"ownerPID":-2147483647,)"
        R"("recordedAt":0.1,"isFullscreen":true,"screenFrame":[[1.0,2.0],[3.0,4.0]],"relativeFrame":[[0.0,0.0],[1.0,1.0]],)"
        R"("screenIndex":9007199254740993,"isOnPrimaryScreen":false,"tilingWorkspace":"3: web"}]}])";
    const auto workspaces = decode(text::replacingAll(written, R"("launchOnStart")",
                                                      R"("bookmarkData":"AQI=","launchOnStart")"));
    EXPECT_EQ(workspaces[0].resources[0].bookmarkData, (Bytes{1, 2}));
    EXPECT_EQ(encodeWorkspaces(workspaces), written);
    EXPECT_EQ(encodeWorkspaces(decode(json::prettyPrinted(written))), written);
    const auto noWindows = decode(workspaceJson("", R"(,"savedWindowLayouts":[])"));
    EXPECT_EQ(decode(encodeWorkspaces(noWindows)), noWindows);
}

TEST_F(RecordCoding, eachTypeIsStoredByItsName) {
    std::size_t read = 0;
    for (const auto* name : {"file", "folder", "application", "url", "terminal", "separator"}) {
        const auto stored = "\"type\":\"" + std::string(name) + "\"";
        const auto workspaces =
            decode(workspaceJson(text::replacingAll(resourceJson, R"("type":"file")", stored)));
        EXPECT_EQ(static_cast<std::size_t>(workspaces[0].resources[0].type), read++) << name;
        EXPECT_NE(encodeWorkspaces(workspaces).find(stored), std::string::npos) << name;
    }
}

TEST_F(RecordCoding, aBundleIdentifierIsLookedUpOnlyForApplicationBundlesWithoutOne) {
    using enum ResourceType;
    desktop.install({.path = "/Applications/Pad.app", .bundleIdentifier = "org.pad"});
    desktop.install({.path = "/Applications/Anonymous.app"});
    desktop.install({.path = "/Applications/Pad.APP", .bundleIdentifier = "org.loud"});
    const std::tuple<std::string, ResourceType, std::string, std::optional<std::string>> cases[]{
        {"/Applications/Pad.app", application, "", "org.pad"},
        {"/Applications/Pad.app", application, R"(,"bundleIdentifier":"kept")", "kept"},
        {"/Applications/Pad.app", file, "", std::nullopt},
        {"/Applications/Pad.APP", application, "", std::nullopt},
        {"/Applications/Gone.app", application, "", std::nullopt},
        {"/Applications/Anonymous.app", application, "", std::nullopt}};
    for (const auto& [path, type, stored, expected] : cases) {
        const auto json = R"({"id":"0E0F6A53-6C1A-4A6E-9D6E-2F1A3B4C5D6E","name":"a","path":")" +
                          path + R"(","type":")" + std::string(rawValue(type)) +
                          R"(","associatedApps":[])" + stored + "}";
        const auto read = decode(workspaceJson(json))[0].resources[0];
        EXPECT_EQ(read.bundleIdentifier, expected) << json;
        const auto made = scene.resource("a", path, type).bundleIdentifier;
        EXPECT_TRUE(made == expected || !stored.empty()) << json;
    }
}

} // namespace
