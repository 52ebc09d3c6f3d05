// Loads, edits and saves a very large workspaces file, and tells how much memory that takes. Fails
// where it is more than it may be, or where a machine with less of it loses the file.

#include "../StoreOnDisk.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace corvane;
namespace fs = std::filesystem;

namespace {

constexpr int workspaceCount = 10'000;
constexpr int resourceCount = 20;
constexpr double mostMemory = 6;

/// Bytes, of the lines in /proc/self/status.
double memory(const std::string& field) {
    std::ifstream status("/proc/self/status");
    std::string name;
    for (std::string line; status >> name && std::getline(status, line);) {
        if (name == field + ":") return std::stod(line) * 1024;
    }
    return 0;
}

void writeFile(const fs::path& file) {
    std::vector<Workspace> workspaces;
    for (int w = 0; w < workspaceCount; ++w) {
        auto workspace = makeWorkspace("Workspace " + std::to_string(w), "", "folder", {757382400});
        for (int r = 0; r < resourceCount; ++r) {
            Resource resource;
            resource.id = Uuid::random();
            resource.name = "document " + std::to_string(r) + ".txt";
            resource.path = "/home/user/Documents/Projects/" + workspace.name + "/" + resource.name;
            resource.type = allResourceTypes[static_cast<std::size_t>(r) % 5];
            workspace.resources.push_back(std::move(resource));
        }
        workspaces.push_back(std::move(workspace));
    }
    fs::create_directories(file.parent_path());
    std::ofstream(file) << encodeWorkspaces(workspaces);
}

/// Whether a process that may take hardly more memory than the file has bytes goes on without it.
bool isKeptWhereMemoryEnds(const fs::path& file) {
    const auto size = fs::file_size(file);
    const pid_t child = fork();
    if (child == 0) {
        const rlim_t most = static_cast<rlim_t>(memory("VmSize")) + size * 3 / 2;
        const rlimit limit{.rlim_cur = most, .rlim_max = most};
        const bool isLimited = setrlimit(RLIMIT_AS, &limit) == 0;
        const machine::StoreOnDisk disk;
        _exit(isLimited && disk.store.workspaces->size() == 3 ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    std::uintmax_t kept = 0;
    for (const auto& entry : fs::directory_iterator(file.parent_path()))
        kept = std::max(kept, entry.path() == file ? 0 : entry.file_size());
    return status == 0 && kept == size && fs::file_size(file) < size;
}

} // namespace

int main() {
    std::string folder = fs::temp_directory_path() / "corvane-load-XXXXXX";
    if (!mkdtemp(folder.data())) return 2;
    setenv("XDG_DATA_HOME", folder.c_str(), 1);
    const auto file = fs::path(folder) / "Corvane/corvane_workspaces.json";
    // In another process, so that what it takes doesn't count here.
    const pid_t writer = fork();
    if (writer == 0) {
        writeFile(file);
        _exit(0);
    }
    waitpid(writer, nullptr, 0);
    const auto size = static_cast<double>(fs::file_size(file));
    const double before = memory("VmRSS");

    auto disk = std::make_unique<machine::StoreOnDisk>();
    auto& store = disk->store;
    const auto& middle = store.workspaces->at(workspaceCount / 2);
    for (int i = 0; i < 5; ++i)
        store.renameResource(middle.resources[3].id, "renamed " + std::to_string(i), middle.id);
    const double peak = memory("VmHWM") - before;
    const bool isSaved = machine::StoreOnDisk().store.workspaces.get() == store.workspaces.get();
    disk.reset();
    const bool isKept = isKeptWhereMemoryEnds(file);
    fs::remove_all(folder);

    std::cout << "load, edit and save: at most " << peak / size << " times the file\n";
    if (!isKept) std::cout << "a machine with less memory loses the file\n";
    return isSaved && isKept && peak <= mostMemory * size ? 0 : 1;
}
