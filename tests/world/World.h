#pragma once

#include <map>
#include <string>
#include <vector>

/// What a test has of the machine that it runs on, however much is installed there: its programs
/// and settings but those that choose for it, and of its applications only those named.
namespace corvane::world {

struct Chosen {
    /// Desktop ids and names of D-Bus services; what the machine doesn't have is left out.
    std::vector<std::string> applications, services;
    /// The program that is the terminal along PATH; where empty, PATH stays as it is.
    std::string terminal;
};

/// A new folder of that name and six letters more: in memory where that can be, since what a test
/// makes and removes thousands of is what a disk is slowest at. Throws where there is none.
std::string makeFolder(const std::string& name);

/// Fills the folder and returns the variables of the environment that lead there.
std::map<std::string, std::string> make(const std::string& folder, const Chosen& chosen);

/// The same in this process's environment, which forgets the session that it was started in.
void enter(const std::string& folder, const Chosen& chosen = {});

/// The words that start a session bus with no services but the chosen ones.
std::vector<std::string> busCommand(const std::string& folder);

} // namespace corvane::world
