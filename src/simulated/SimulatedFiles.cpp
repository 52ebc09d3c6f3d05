#include "simulated/SimulatedFiles.h"

#include <algorithm>

namespace corvane {

namespace {

bool covers(const std::set<std::string>& faults, const std::string& path) {
    return std::any_of(faults.begin(), faults.end(), [&](const std::string& fault) {
        return path == fault || path.starts_with(fault + "/");
    });
}

Error refusal(std::string_view what, const std::string& path) {
    return {"“" + path + "” can't be " + std::string(what) + ": permission denied."};
}

} // namespace

bool SimulatedFiles::isDirectory(const std::string& path) const {
    if (directories.contains(path)) return true;
    const auto below = path + "/";
    const auto isBelow = [&](const std::string& other) { return other.starts_with(below); };
    return std::any_of(directories.begin(), directories.end(), isBelow) ||
           std::any_of(contents.begin(), contents.end(),
                       [&](const auto& entry) { return isBelow(entry.first); });
}

bool SimulatedFiles::exists(const std::string& path) const {
    return contents.contains(path) || isDirectory(path);
}

Result<std::string> SimulatedFiles::readFile(const std::string& path) const {
    if (covers(unreadable, path)) return refusal("read", path);
    const auto found = contents.find(path);
    if (found != contents.end()) return found->second;
    return Error{isDirectory(path) ? "“" + path + "” is a folder."
                                   : "There is no file “" + path + "”."};
}

std::optional<Error> SimulatedFiles::writeFile(const std::string& path, std::string_view bytes) {
    if (covers(unwritable, path) || isDirectory(path)) return refusal("written", path);
    contents[path] = bytes;
    ++writes[path];
    return std::nullopt;
}

std::optional<Error> SimulatedFiles::createDirectory(const std::string& path) {
    if (covers(unwritable, path) || contents.contains(path)) return refusal("made", path);
    directories.insert(path);
    return std::nullopt;
}

std::optional<Error> SimulatedFiles::copyItem(const std::string& from, const std::string& to) {
    if (exists(to)) return Error{"“" + to + "” exists already."};
    const auto content = readFile(from);
    if (!content) return content.error();
    return writeFile(to, *content);
}

std::optional<Error> SimulatedFiles::moveItem(const std::string& from, const std::string& to) {
    if (!exists(from)) return Error{"There is no file “" + from + "”."};
    if (exists(to)) return Error{"“" + to + "” exists already."};
    if (covers(unremovable, from) || covers(unwritable, to)) return refusal("moved", from);
    // A name that starts with "{from}/" belongs to the item; the item itself is exactly `from`.
    const auto renamed = [&](const std::string& path) { return to + path.substr(from.size()); };
    const auto moves = [&](const std::string& path) {
        return path == from || path.starts_with(from + "/");
    };
    std::map<std::string, std::string> movedContents;
    for (auto& [path, content] : contents)
        movedContents[moves(path) ? renamed(path) : path] = std::move(content);
    contents = std::move(movedContents);
    std::set<std::string> movedDirectories;
    for (const auto& path : directories)
        movedDirectories.insert(moves(path) ? renamed(path) : path);
    directories = std::move(movedDirectories);
    return std::nullopt;
}

std::optional<Error> SimulatedFiles::removeItem(const std::string& path) {
    if (!exists(path)) return Error{"There is no file “" + path + "”."};
    if (covers(unremovable, path)) return refusal("removed", path);
    const auto goes = [&](const std::string& other) {
        return other == path || other.starts_with(path + "/");
    };
    std::erase_if(contents, [&](const auto& entry) { return goes(entry.first); });
    std::erase_if(directories, goes);
    return std::nullopt;
}

} // namespace corvane
