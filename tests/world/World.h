#pragma once

#include <map>
#include <string>
#include <vector>

/// What a test has of the machine that it runs on, however much is installed there: its programs
/// and settings but those that choose for it, and of its applications only those named.
namespace corvane::world {

struct Chosen {
    /// Desktop ids; what the machine doesn't have is left out.
    std::vector<std::string> applications;
    /// The program that is the terminal along PATH; where empty, PATH stays as it is.
    std::string terminal;
};

/// Fills the folder and returns the variables of the environment that lead there.
std::map<std::string, std::string> make(const std::string& folder, const Chosen& chosen);

/// The same in this process's environment, which forgets the session that it was started in.
void enter(const std::string& folder, const Chosen& chosen = {});

} // namespace corvane::world
