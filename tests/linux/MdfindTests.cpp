#include "linux/installed/LinuxMetadataQuery.h"
#include "linux/scripts/MdfindQuery.h"
#include "linux/scripts/MdfindTool.h"
#include "machine/Machine.h"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

std::string queryFor(const std::string& name) {
    return "kMDItemKind == 'Application' && kMDItemDisplayName == '" + name + "'";
}

TEST(MdfindQuery, readsOneFormAndNothingElse) {
    const std::vector<std::pair<std::string, std::optional<std::string>>> cases{
        {queryFor("Mail"), "Mail"},
        {queryFor(""), ""},
        {queryFor("a && b == \"c\""), "a && b == \"c\""},
        {queryFor("a\\'b\\\\"), "a'b\\"},
        {" kMDItemKind=='Application'&&kMDItemDisplayName=='x' ", "x"},
        {queryFor("It's"), std::nullopt},
        {queryFor("x' || 'a' == 'a"), std::nullopt},
        {queryFor("x") + " && kMDItemKind == 'y'", std::nullopt},
        {queryFor("x\\"), std::nullopt},
        {"kMDItemKind == 'Folder' && kMDItemDisplayName == 'x'", std::nullopt},
        {"kMDItemDisplayName == 'x'", std::nullopt},
        {"kMDItemKind == 'Application' && kMDItemDisplayName == '", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [query, name] : cases)
        EXPECT_EQ(parseApplicationNameQuery(query), name) << query;
}

TEST(MdfindTool, printsTheBundlesOfThatName) {
    machine::install("m.clock", "Alarm Clock", "Name[de]=Wecker\nExec=sh");
    const InstalledApplications installed;
    const auto run = [&](const std::string& name) {
        const auto result = runMdfindTool(installed, {queryFor(name)});
        return std::to_string(result.status) + ":" + result.output;
    };
    EXPECT_EQ(run("Wecker"), "0:/Applications/Alarm Clock.app\n");
    EXPECT_EQ(run("wecker"), "0:");
    EXPECT_EQ(run("Finder"), "0:/Applications/Files.app\n");
    EXPECT_EQ(run("Weck'er"), "1:");
    EXPECT_EQ(runMdfindTool(installed, {}).status, 1);
    machine::uninstall("m.clock");
}

TEST(MetadataQuery, findsPartsOfNamesIgnoringCaseAndDiacritics) {
    machine::install("q.cafe", "Coffee House", "Name[de]=Kaffee-Café\nExec=sh");
    const InstalledApplications installed;
    LinuxMetadataQuery query(installed);
    const std::string format =
        "kMDItemKind == 'Application' AND kMDItemDisplayName CONTAINS[cd] %@";
    for (const char* part : {"CAFE", "fée-c", "coffee h"}) {
        const auto items = query.results(format, part);
        ASSERT_EQ(items.size(), 1) << part;
        EXPECT_EQ(items.front().path, "/Applications/Coffee House.app");
    }
    EXPECT_TRUE(query.results(format, "").empty());
    EXPECT_TRUE(query.results("kMDItemDisplayName == %@", "Coffee House").empty());
    machine::uninstall("q.cafe");
}

} // namespace
