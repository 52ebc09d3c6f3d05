#pragma once

namespace corvane {

/// Tells assistive programs of the buttons, switches and menu items of every view, for as long as
/// the program runs: the toolkit's own word forgets to say what is disabled, and its press does
/// nothing. What `Accessible` says of a control stands; its function `press()` is its action.
/// Before the first view; main thread.
void describeControls();

} // namespace corvane
