#pragma once

#include "foundation/Text.h"
#include "linux/installed/InstalledApplications.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

/// A small machine in a temporary folder: its own home and XDG folders, with installed applications
/// whose program writes down what it was given. The environment names them before any test runs,
/// and what a test installs and records is away at the next.
namespace corvane::machine {

namespace fs = std::filesystem;

/// A path in the temporary folder, with the folders above it made.
std::string place(const std::string& relative);

void write(const std::string& file, const std::string& content);
std::string read(const std::string& file);
/// A script of the shell that can be run; its path.
std::string makeProgram(const std::string& relative, const std::string& script);
/// The names in a folder, sorted.
std::vector<std::string> namesIn(const std::string& folder);

/// Installs a desktop entry for the user; more keys than Type and Name come as lines.
void install(const std::string& id, const std::string& name, const std::string& keys = "Exec=sh");
void uninstall(const std::string& id);
/// "Exec=" with the program that records what it is given under that label.
std::string recording(const std::string& label, const std::string& fieldCodes);

/// Asks again and again, ten seconds at most.
bool comesTrue(const std::function<bool()>& condition);
/// Looks until it sees that text, as long; a failure where it doesn't come.
void comesToShow(const std::string& expected, const std::function<std::string()>& look);

void clearRecords();
/// The arguments of each start under that label, joined by "|" and sorted; waits at most ten
/// seconds for that many starts.
std::vector<std::string> records(const std::string& label, std::size_t count);

/// Where the tests run as root: acts as a user without privileges as long as it lives, and hands
/// that user the folder. Does nothing for anyone else.
struct AsOrdinaryUser {
    explicit AsOrdinaryUser(const std::string& folder);
    ~AsOrdinaryUser();
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
};

struct ScopedVariable {
    ScopedVariable(const std::string& name, const std::string& value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;

private:
    std::string name_;
    std::string before_;
};

} // namespace corvane::machine
