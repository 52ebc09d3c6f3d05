#pragma once

#include "platform/FileSystem.h"

namespace corvane {

class InstalledApplications;

/// The file system of the machine, in which the installed applications' bundles stand as folders.
/// Application Support is the XDG data folder. Copies and moves appear whole or not at all.
class LinuxFileSystem : public FileSystem {
public:
    /// Takes the user's folders from the environment.
    explicit LinuxFileSystem(const InstalledApplications& installed);

    std::string applicationSupportDirectory() const override { return applicationSupport_; }
    std::string documentsDirectory() const override { return documents_; }
    bool exists(const std::string& path) const override;
    bool isDirectory(const std::string& path) const override;
    std::vector<std::string> namesIn(const std::string& folder) const override;
    Result<FileStamp> stamp(const std::string& path) const override;
    Result<std::string> readFile(const std::string& path) const override;
    Result<void> writeFile(const std::string& path, std::string_view bytes) override;
    Result<FileStamp> rewriteFile(const std::string& path, std::string_view bytes,
                                  const std::optional<FileStamp>& known) override;
    Result<void> createDirectory(const std::string& path) override;
    Result<void> copyItem(const std::string& from, const std::string& to) override;
    Result<void> moveItem(const std::string& from, const std::string& to) override;
    Result<void> removeItem(const std::string& path) override;
    void makePrivate(const std::string& path) override;

private:
    const InstalledApplications& installed_;
    std::string applicationSupport_;
    std::string documents_;
};

} // namespace corvane
