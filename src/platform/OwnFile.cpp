#include "platform/OwnFile.h"

#include "foundation/Url.h"
#include "platform/MainQueue.h"
#include "platform/SafeNames.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace corvane {

/// Shared with the work on the disk's thread.
struct OwnFile::State {
    FileSystem& fileSystem;
    const Clock& clock;
    MainQueue& mainQueue;
    const std::string path;
    // Of the main thread.
    Reports reports = {};
    std::uint64_t writesBegun = 0;
    std::uint64_t newestReported = 0;
    // Of whoever works with the file: the disk's thread once there is such work.
    std::optional<std::string> unreadableBecause = {};
    std::optional<FileStamp> known = {};
    // Of both.
    std::mutex mutex = {};
    std::optional<std::string> newest = {};

    std::optional<FileStamp> stampNow() const {
        const auto stamp = fileSystem.stamp(path);
        return stamp ? std::optional(*stamp) : std::nullopt;
    }
    std::optional<std::string> takeNewest() {
        const std::lock_guard lock(mutex);
        return std::exchange(newest, std::nullopt);
    }
};

namespace {

/// What came of one write.
struct Outcome {
    std::uint64_t number = 0;
    Result<void> written = {};
    struct Kept {
        std::string path, unreadableBecause;
    };
    std::vector<Kept> kept = {};
    /// Nothing was left to write: a write before this one took its content along.
    bool isEmpty = false;
    /// Set by the first of the two threads that is done with it; the second one reports.
    std::atomic<bool> isReady = false;
};

} // namespace

OwnFile::OwnFile(FileSystem& fileSystem, const Clock& clock, MainQueue& mainQueue,
                 DiskQueue& diskQueue, std::string path, Reports reports)
    : state_(new State{fileSystem, clock, mainQueue, std::move(path), std::move(reports)}),
      diskQueue_(diskQueue) {}

OwnFile::~OwnFile() {
    state_->reports = {};
}

const std::string& OwnFile::path() const {
    return state_->path;
}

Result<std::string> OwnFile::read() {
    state_->unreadableBecause.reset();
    state_->known = state_->stampNow();
    auto bytes = state_->fileSystem.readFile(path());
    if (!bytes && !bytes.error().isMissing) distrust(bytes.error().localizedDescription);
    return bytes;
}

void OwnFile::distrust(const std::string& why) {
    state_->unreadableBecause = why;
}

namespace {

template <typename State>
Result<void> makeRoom(State& state, Outcome& outcome) {
    const auto stamp = state.fileSystem.stamp(state.path);
    if (!stamp && !stamp.error().isMissing) return stamp.error();
    const bool isKnown = !stamp || *stamp == state.known;
    if (isKnown && !state.unreadableBecause) return {};
    const auto* why = state.unreadableBecause ? "unreadable" : "changed";
    const auto kept = keepFileAside(state.fileSystem, state.path, why, state.clock.now());
    if (!kept) {
        const auto reason = state.unreadableBecause
                                ? "can't be read (" + *state.unreadableBecause + ")"
                                : std::string("was changed by another program");
        return Error{"“" + state.path + "” " + reason + ", and it can't be kept either (" +
                     kept.error().localizedDescription + "). It stays as it is."};
    }
    // Its copy is kept: as long as it is the same, it may be written over.
    const auto now = state.stampNow();
    state.known = stamp && now == *stamp ? now : std::nullopt;
    outcome.kept.push_back({*kept, std::exchange(state.unreadableBecause, {}).value_or("")});
    return {};
}

template <typename State>
Result<void> replace(State& state, const std::string& bytes, Outcome& outcome) {
    if (const auto done = state.fileSystem.createDirectory(path::parent(state.path)); !done)
        return done;
    // Another program may come between.
    constexpr int mostTries = 3;
    for (int tries = 1;; ++tries) {
        if (const auto room = makeRoom(state, outcome); !room) return room;
        const auto done = state.fileSystem.rewriteFile(state.path, bytes, state.known);
        if (done) {
            state.known = *done;
            return {};
        }
        const auto now = state.stampNow();
        if (tries == mostTries || !now || now == state.known) return done.error();
    }
}

template <typename State>
void report(State& state, const Outcome& outcome) {
    for (const auto& kept : outcome.kept) {
        if (!kept.path.empty() && state.reports.kept)
            state.reports.kept(kept.path, kept.unreadableBecause);
    }
    // One that waited for its turn may tell of what a later one has made good.
    if (outcome.isEmpty || outcome.number < state.newestReported) return;
    state.newestReported = outcome.number;
    if (state.reports.written) state.reports.written(outcome.written);
}

} // namespace

void OwnFile::write(std::string bytes) {
    {
        const std::lock_guard lock(state_->mutex);
        state_->newest = std::move(bytes);
    }
    const auto outcome = std::make_shared<Outcome>();
    outcome->number = ++state_->writesBegun;
    const bool hasEnded = diskQueue_.run([state = state_, outcome] {
        const auto newest = state->takeNewest();
        outcome->isEmpty = !newest;
        if (newest) outcome->written = replace(*state, *newest, *outcome);
        if (outcome->isReady.exchange(true))
            state->mainQueue.async([state, outcome] { report(*state, *outcome); });
    });
    if (hasEnded || outcome->isReady.exchange(true)) report(*state_, *outcome);
}

} // namespace corvane
