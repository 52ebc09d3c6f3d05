#pragma once

#include <QStringList>

class QQuickWindow;

namespace corvane {

/// The texts of a window that stand out too little from what is behind them: what is drawn with
/// them is compared with what is drawn without them, so that gradients and shades count as they are
/// seen. By the contrast ratio of WCAG 2, at least 4.5 to 1, symbols 3 to 1. What is disabled, or
/// stands behind a sheet, is passed over. One line each: the text, its ratio, its place in the
/// window.
QStringList faintTexts(QQuickWindow& window);

} // namespace corvane
