#include "simulated/SimulatedFiles.h"

#include "foundation/Url.h"

#include <algorithm>

namespace corvane {

namespace {

bool isWithin(const std::string& item, const std::string& path) {
    return path == item || path.starts_with(item + "/");
}

bool covers(const std::set<std::string>& faults, const std::string& path) {
    return std::any_of(faults.begin(), faults.end(),
                       [&](const std::string& fault) { return isWithin(fault, path); });
}

/// Renames the keys of an item and of what is in it.
template <typename T>
void moveEntries(std::map<std::string, T>& entries, const std::string& from,
                 const std::string& to) {
    std::map<std::string, T> moved;
    // An entry at the new place is of something that isn't there any more.
    std::erase_if(entries, [&](const auto& entry) { return isWithin(to, entry.first); });
    for (auto& [path, value] : entries)
        moved[isWithin(from, path) ? to + path.substr(from.size()) : path] = std::move(value);
    entries = std::move(moved);
}

Error missing(const std::string& path) {
    return {.localizedDescription = "There is no file “" + path + "”.", .isMissing = true};
}

Error refusal(std::string_view what, const std::string& path) {
    return {.localizedDescription =
                "“" + path + "” can't be " + std::string(what) + ": permission denied."};
}

} // namespace

bool SimulatedFiles::isDirectory(const std::string& path) const {
    if (directories.contains(path) || path == "/") return true;
    const auto below = path + "/";
    const auto directory = directories.lower_bound(below);
    if (directory != directories.end() && directory->starts_with(below)) return true;
    const auto file = contents.lower_bound(below);
    return file != contents.end() && file->first.starts_with(below);
}

bool SimulatedFiles::isReachable(const std::string& path) const {
    const auto failing = failingLooks.find(path);
    if (failing != failingLooks.end() && failing->second-- > 0) return false;
    return !covers(unreachable, path);
}

bool SimulatedFiles::exists(const std::string& path) const {
    return isReachable(path) && (contents.contains(path) || isDirectory(path));
}

std::vector<std::string> SimulatedFiles::namesIn(const std::string& folder) const {
    if (covers(unreadable, folder) || !isReachable(folder)) return {};
    const auto below = folder + "/";
    std::set<std::string> names;
    const auto add = [&](const std::string& path) {
        if (path.starts_with(below))
            names.insert(path.substr(below.size(), path.find('/', below.size()) - below.size()));
    };
    for (const auto& [path, content] : contents)
        add(path);
    for (const auto& path : directories)
        add(path);
    return {names.begin(), names.end()};
}

Result<FileStamp> SimulatedFiles::stamp(const std::string& path) const {
    if (!isReachable(path)) return refusal("reached", path);
    if (!contents.contains(path) && !isDirectory(path)) return missing(path);
    const auto found = contents.find(path);
    if (found == contents.end()) return FileStamp{};
    return FileStamp{.size = found->second.size(),
                     .modified =
                         static_cast<std::int64_t>(std::hash<std::string>()(found->second))};
}

Result<std::string> SimulatedFiles::readFile(const std::string& path) const {
    if (covers(unreadable, path) || covers(unreachable, path)) return refusal("read", path);
    const auto found = contents.find(path);
    if (found != contents.end()) return found->second;
    if (isDirectory(path)) return Error{"“" + path + "” is a folder."};
    return missing(path);
}

Result<void> SimulatedFiles::writeFile(const std::string& path, std::string_view bytes) {
    if (covers(unwritable, path) || covers(unreachable, path) || isDirectory(path))
        return refusal("written", path);
    contents[path] = bytes;
    ++writes[path];
    return {};
}

Result<FileStamp> SimulatedFiles::rewriteFile(const std::string& path, std::string_view bytes,
                                              const std::optional<FileStamp>& known) {
    const auto now = stamp(path);
    if (now ? *now != known : !now.error().isMissing) return refusal("written", path);
    if (const auto written = writeFile(path, bytes); !written) return written.error();
    return stamp(path);
}

Result<void> SimulatedFiles::createDirectory(const std::string& path) {
    if (covers(unwritable, path) || contents.contains(path)) return refusal("made", path);
    directories.insert(path);
    return {};
}

Result<void> SimulatedFiles::copyItem(const std::string& from, const std::string& to) {
    if (exists(to)) return Error{"“" + to + "” exists already."};
    const auto content = readFile(from);
    if (!content) return content.error();
    return writeFile(to, *content);
}

Result<void> SimulatedFiles::moveItem(const std::string& from, const std::string& to) {
    if (!exists(from)) return missing(from);
    if (exists(to)) return Error{"“" + to + "” exists already."};
    if (covers(unremovable, from) || covers(unwritable, to)) return refusal("moved", from);
    std::set<std::string> movedDirectories;
    for (const auto& path : directories)
        movedDirectories.insert(isWithin(from, path) ? to + path.substr(from.size()) : path);
    directories = std::move(movedDirectories);
    moveEntries(contents, from, to);
    moveEntries(identities_, from, to);
    for (const auto& [path, identity] : identities_)
        places_[identity] = path;
    return {};
}

Result<void> SimulatedFiles::removeItem(const std::string& path) {
    if (!exists(path)) return missing(path);
    if (covers(unremovable, path)) return refusal("removed", path);
    std::erase_if(contents, [&](const auto& entry) { return isWithin(path, entry.first); });
    std::erase_if(identities_, [&](const auto& entry) { return isWithin(path, entry.first); });
    std::erase_if(directories, [&](const auto& other) { return isWithin(path, other); });
    return {};
}

std::optional<int> SimulatedFiles::identityOf(const std::string& path) {
    if (!exists(path)) return std::nullopt;
    const auto [entry, isNew] = identities_.try_emplace(path, identitiesGiven_);
    if (isNew) places_[identitiesGiven_++] = path;
    return entry->second;
}

std::optional<std::string> SimulatedFiles::pathOf(int identity) const {
    const auto place = places_.find(identity);
    if (place == places_.end()) return std::nullopt;
    const auto& path = place->second;
    const auto now = identities_.find(path);
    const bool isThere = now != identities_.end() && now->second == identity && exists(path);
    return isThere ? std::optional(path) : std::nullopt;
}

} // namespace corvane
