#include "core/StoreScene.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using enum ResourceType;

TEST(ResourceAppNames, eachTypeHasItsWayToAnApplication) {
    StoreScene scene;
    auto& store = scene.start();
    scene.desktop.defaultHandlers = {{"txt", "/Applications/Text Edit 2.1.app"},
                                     {"md", "/opt/pad"},
                                     {"https:", "/Applications/Web.app"},
                                     {"/", "/Applications/Files.app"}};
    const struct {
        ResourceType type;
        std::string path;
        std::optional<std::string> expected;
    } cases[]{
        {file, "/docs/no such file #1.txt", "Text Edit 2.1"},
        {file, "/docs/a.md", "pad"},
        {file, "/docs/a.xyz", std::nullopt},
        {folder, "/docs", "Finder"},
        {application, "/Applications/Ünter Wegs.app", "Ünter Wegs"},
        {application, "/Applications/v1.2.app", "v1.2"},
        {application, "Pad.app", "Pad"},
        {application, "/Applications/Pad.app/", "named"},
        {application, "/Applications/Pad.APP", "named"},
        {application, "/usr/bin/pad", "named"},
        {application, "", "named"},
        {url, "https://corvane.example/", "Safari"},
        {terminal, "/tmp|make", "Terminal"},
        {separator, "", std::nullopt},
    };
    for (const auto& [type, path, expected] : cases)
        EXPECT_EQ(store.appNameForResource(scene.resource("named", path, type)), expected) << path;
}

} // namespace
} // namespace corvane
