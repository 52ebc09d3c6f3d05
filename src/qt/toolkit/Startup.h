#pragma once

class QGuiApplication;

namespace corvane {

/// Gives the program its name, its icon, its fonts and the style of its controls. Before the
/// application object, and right after it.
void prepareApplication();
void nameApplication(QGuiApplication& application);

} // namespace corvane
