#include "simulated/SimulatedDesktop.h"
#include "ui/ApplicationPicker.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(ApplicationPickerTest, findsAnApplicationByAPartOfItsName) {
    SimulatedDesktop desktop;
    auto platform = desktop.platform();
    EXPECT_EQ(ApplicationPicker(platform.applications).emptyText(), "There are no applications.");
    for (const auto* name : {"Quill", "atlas", "Ärger", "Pad 10", "Pad 9"})
        desktop.install({.path = "/Applications/" + std::string(name) + ".app"});
    ApplicationPicker picker(platform.applications);
    int changes = 0;
    const auto subscription = picker.objectWillChange.subscribe([&] { ++changes; });
    const struct {
        const char* typed;
        std::vector<int> moves;
        /// The names, the selected one in brackets.
        const char* shown;
    } cases[]{
        {"", {}, "Ärger atlas Pad 9 Pad 10 Quill "},
        {"", {1, 1}, "Ärger [atlas] Pad 9 Pad 10 Quill "},
        {"", {-1}, "Ärger atlas Pad 9 Pad 10 [Quill] "},
        {"", {1, 100, -2}, "Ärger atlas [Pad 9] Pad 10 Quill "},
        {"A", {}, "[Ärger] atlas Pad 9 Pad 10 "},
        {"ad", {1, 1}, "Pad 9 [Pad 10] "},
        {"zz", {1}, ""},
    };
    for (const auto& [typed, moves, expected] : cases) {
        picker.setSearchText(typed);
        for (const int by : moves)
            picker.moveSelection(by);
        std::string shown;
        for (std::size_t i = 0; i < picker.entries().size(); ++i) {
            const auto& name = picker.entries()[i].name;
            shown += (picker.selected() == i ? "[" + name + "]" : name) + " ";
        }
        EXPECT_EQ(shown, expected) << typed;
    }
    EXPECT_EQ(picker.emptyText(), "No application has this name.");
    EXPECT_EQ(picker.chosen(), std::nullopt);
    picker.setSearchText("quill");
    picker.select(7);
    EXPECT_EQ(picker.chosen(), "/Applications/Quill.app");
    EXPECT_EQ(changes, 7 + 8 + 1);
}

} // namespace
} // namespace corvane
