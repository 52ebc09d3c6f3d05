#pragma once

#include "qt/Interface.h"

#include <gtest/gtest.h>

namespace corvane {

/// The program's windows over workspaces of files.
class Views : public testing::Test {
protected:
    Interface interface;

    Workspace workspace(const std::string& name, std::vector<Resource> resources = {}) {
        auto made = makeWorkspace(name, name == "Work" ? "What has to be done" : "", "star", {});
        made.resources = std::move(resources);
        return made;
    }
    Resource note() {
        interface.desktop.files.contents["/note.txt"] = "A note";
        return makeResource("note", "/note.txt", ResourceType::file, interface.platform.bundles);
    }
};

} // namespace corvane
