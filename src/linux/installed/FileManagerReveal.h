#pragma once

#include "foundation/Result.h"
#include "foundation/Url.h"

#include <functional>
#include <optional>

namespace corvane {

/// Asks the session's file manager to show the item selected (org.freedesktop.FileManager1); where
/// nobody answers, calls `openFolder` on a thread of its own, so that it has to own what it uses.
/// Returns at once; where no thread can be had, `openFolder` is called here, and nobody asked.
void revealInFileManager(const Url& item,
                         const std::function<Result<void>(const Url& folder)>& openFolder);

} // namespace corvane
