#pragma once

#include "linux/windows/CompositorOnBus.h"

#include <string>

/// Our extension, as the GNOME Shell of this session and its settings see it.
namespace corvane::gnome {

/// One sentence for a person: why it doesn't answer, and what to do. `error` is what the bus calls
/// the reason; empty where there was no answer in time.
std::string whyExtensionIsSilent(CompositorOnBus& shell, const std::string& error, Deadline by);

/// Asks the shell to let it run. False where it won't, and where this shell doesn't know it yet, so
/// that it is to run from the next login on.
bool enableExtension(CompositorOnBus& shell, Deadline by);

} // namespace corvane::gnome
