#pragma once

#include "platform/Panels.h"

namespace corvane {

/// In the place of file panels as long as the toolkit shows none: each is cancelled at once.
class NoPanels final : public Panels {
public:
    std::optional<Url> runSavePanel(const SavePanel&) override { return std::nullopt; }
    std::optional<Url> runOpenPanel(const OpenPanel&) override { return std::nullopt; }
    void beginOpenPanel(const OpenPanel&, std::function<void(std::optional<Url>)>) override {}
};

} // namespace corvane
