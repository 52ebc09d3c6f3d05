#pragma once

#include "platform/StatusBar.h"

#include <memory>

class QMenu;

namespace corvane {

/// The menu as this program shows it by itself, as it is now. What is chosen runs once it has gone.
std::unique_ptr<QMenu> makePopup(const Menu& menu);

} // namespace corvane
