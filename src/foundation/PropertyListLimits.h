#pragma once

#include <string_view>

namespace corvane {

/// Whether a text that claims to be a property list can be read out safely: a few bytes of the
/// binary format can name the same object so often, or nest so deep, that no memory and no stack
/// suffices. False also for a binary list whose tables don't fit together.
bool isWithinPropertyListLimits(std::string_view bytes);

} // namespace corvane
