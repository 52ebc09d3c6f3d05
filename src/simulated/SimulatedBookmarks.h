#pragma once

#include "platform/Bookmarks.h"

#include <map>
#include <set>
#include <string>

namespace corvane {

class SimulatedFiles;

/// Bookmarks of the files in memory: one follows its file through moves, and dies with it.
class SimulatedBookmarks : public Bookmarks {
public:
    explicit SimulatedBookmarks(SimulatedFiles& files) : files_(files) {}

    /// Refusals, by path: no bookmark can be made, one doesn't resolve, access isn't given.
    std::set<std::string> uncreatable;
    std::set<std::string> unresolvable;
    std::set<std::string> inaccessible;
    /// How often access to a path was started and not stopped yet.
    std::map<std::string, int> accesses;

    Result<Bytes> create(const Url& url) override;
    Result<Url> resolve(const Bytes& bookmark) override;
    bool startAccessing(const Url& url) override;
    void stopAccessing(const Url& url) override;

private:
    SimulatedFiles& files_;
};

} // namespace corvane
