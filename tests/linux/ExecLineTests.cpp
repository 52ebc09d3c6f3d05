#include "foundation/Text.h"
#include "linux/installed/ExecLine.h"
#include "linux/installed/InstalledApplications.h"

#include <gtest/gtest.h>

using namespace corvane;

namespace {

/// Each command as words joined by "|", the commands by " + ".
std::string commandsOf(const std::string& exec, const std::vector<std::string>& uris,
                       const std::vector<std::string>& arguments) {
    InstalledApplication application;
    application.desktopFile = "/a/b.desktop";
    application.displayName = "A B";
    application.exec = exec;
    application.icon = "pen";
    const auto commands = execCommands(application, uris, arguments);
    if (!commands) return "error";
    std::vector<std::string> lines;
    for (const auto& command : *commands)
        lines.push_back(text::joined(command, "|"));
    return text::joined(lines, " + ");
}

TEST(ExecLine, fillsInFieldCodes) {
    const std::string file = "file:///tmp/a%20b";
    const std::string web = "http://x.example/?q=%20";
    struct Case {
        std::string exec;
        std::vector<std::string> uris;
        std::vector<std::string> arguments;
        std::string commands;
    };
    const std::vector<Case> cases{
        {"edit %f", {}, {}, "edit"},
        {"edit %f", {file}, {}, "edit|/tmp/a b"},
        {"edit %f", {file, "file:///c"}, {}, "edit|/tmp/a b + edit|/c"},
        {"edit %F", {file, "file:///c"}, {}, "edit|/tmp/a b|/c"},
        {"edit %u", {web}, {}, "edit|" + web},
        {"edit -w %U end", {web, file}, {}, "edit|-w|" + web + "|" + file + "|end"},
        {"edit --at=%f", {file}, {}, "edit|--at=/tmp/a b"},
        {"edit", {file}, {}, "edit|/tmp/a b"},
        {"edit", {web}, {}, "edit|" + web},
        {"edit %F", {web}, {}, "error"},
        {"sh -c \"cat %f\"", {file}, {}, "sh|-c|cat ${1+\"${1}\"}|sh|/tmp/a b"},
        {"sh -c \"cat %f\"", {}, {}, "sh|-c|cat ${1+\"${1}\"}|sh"},
        {"env A=b /bin/bash -lc 'x \"%u\" 5%% %c' me",
         {web},
         {},
         "env|A=b|/bin/bash|-lc|x \"${1}\" 5% A B|me|" + web},
        {"sh -c \"cat %F\"",
         {file, "file:///c"},
         {},
         "sh|-c|cat ${1+\"${1}\"}|sh|/tmp/a b + sh|-c|cat ${1+\"${1}\"}|sh|/c"},
        {"sh -c \"x '%f'\"", {file}, {}, "sh|-c|x ''${1+\"${1}\"}''|sh|/tmp/a b"},
        {"sh -c %f", {file}, {}, "sh|-c|${1+\"${1}\"}|sh|/tmp/a b"},
        {"perl -e \"open %f\"", {file}, {}, "error"},
        {"xterm -e \"cat %f\"", {file}, {}, "error"},
        {"edit %u", {"file:+silent!!touch%20x"}, {}, "error"},
        {"edit %f", {"file:-x"}, {}, "error"},
        {"edit %u", {"file://otherhost/etc/x"}, {}, "error"},
        {"edit %f", {"file://localhost/c"}, {}, "edit|/c"},
        {"edit %U", {"-x"}, {}, "error"},
        {"edit %f", {"file:///a%00b"}, {}, "error"},
        {"edit %f", {}, {"-n", "%f $(x)"}, "edit|-n|%f $(x)"},
        {"edit %f", {file}, {"-n"}, "edit|/tmp/a b|-n"},
        {"\"my edit\" %i %c %k 100%% %m", {}, {}, "my edit|--icon|pen|A B|/a/b.desktop|100%"},
        {"sh -c \"exec edit\" '' %f", {}, {}, "sh|-c|exec edit|"},
        {"edit \"open", {}, {}, "error"},
        {"", {}, {}, "error"},
    };
    for (const auto& [exec, uris, arguments, commands] : cases) {
        EXPECT_EQ(commandsOf(exec, uris, arguments), commands) << exec;
    }
}

} // namespace
