#pragma once

#include "linux/system/FileDescriptor.h"

#include <functional>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

/// What only the superuser makes of the file systems.
namespace corvane::machine {

/// Whether this process may mount what it alone sees.
inline bool mayMount() {
    static const bool may = unshare(CLONE_NEWNS) == 0 &&
                            mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return may;
}

/// Only the superuser makes some troubles, also in the middle of what another user does.
inline void asSuperuser(const std::function<void()>& act) {
    const uid_t user = geteuid();
    EXPECT_EQ(seteuid(0), 0);
    act();
    EXPECT_EQ(seteuid(user), 0);
}

inline bool hasFuse() {
    return FileDescriptor(open("/dev/fuse", O_RDWR | O_CLOEXEC)) ? true : false;
}

/// What a file system leaves whose program has ended.
inline void mountDeadFileSystem(const std::string& folder) {
    const FileDescriptor fuse(open("/dev/fuse", O_RDWR | O_CLOEXEC));
    const auto options =
        "fd=" + std::to_string(fuse.get()) + ",rootmode=40000,user_id=0,group_id=0,allow_other";
    EXPECT_EQ(mount("none", folder.c_str(), "fuse", 0, options.c_str()), 0);
}

} // namespace corvane::machine
