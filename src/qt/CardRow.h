#pragma once

#include "foundation/Uuid.h"

#include <QString>

namespace corvane {

/// What the view of one card shows.
struct CardRow {
    Uuid workspaceId;
    /// Counts the cards of one identifier, from 0, so that each row has a key of its own.
    int repetition = 0;
    QString name;
    QString description;
    QString icon;
    int gradient = 0;
    bool isRunning = false;
    bool isLoading = false;
    QString startTitle;
    QString statusText;

    bool operator==(const CardRow&) const = default;
};

} // namespace corvane
