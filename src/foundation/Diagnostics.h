#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace corvane {

/// Hands one line, made of the pieces in order, to the sink. With no sink, the state in which the
/// program ships, nothing is even put together. Any thread.
void diagnostic(std::initializer_list<std::string_view> pieces);

/// Whether a sink is set: what a line alone needs isn't worth finding out otherwise. Any thread.
bool diagnosticsAreOn();

using DiagnosticSink = std::function<void(const std::string& line)>;
/// Replaces the sink; an empty one turns diagnostics off. Called before other threads exist.
void setDiagnosticSink(DiagnosticSink sink);

} // namespace corvane
