#include "qt/simulated/Contrast.h"

#include "qt/items/Symbols.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVariant>
#include <algorithm>
#include <cmath>
#include <vector>

namespace corvane {
namespace {

constexpr double leastOfTexts = 4.5;
constexpr double leastOfSymbols = 3;
/// Each row has one, which isn't to be seen before the row's name.
constexpr double leastOfHandles = 2;

double luminance(QRgb pixel) {
    const auto linear = [](int channel) {
        const double part = channel / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(pixel)) + 0.7152 * linear(qGreen(pixel)) +
           0.0722 * linear(qBlue(pixel));
}

double contrast(QRgb one, QRgb other) {
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

int distance(QRgb one, QRgb other) {
    return std::abs(qRed(one) - qRed(other)) + std::abs(qGreen(one) - qGreen(other)) +
           std::abs(qBlue(one) - qBlue(other));
}

void collectTexts(QQuickItem* item, std::vector<QQuickItem*>& texts) {
    if (!item->isVisible()) return;
    const bool isText = item->inherits("QQuickText") || item->inherits("QQuickTextInput");
    if (isText && !item->property("text").toString().isEmpty()) texts.push_back(item);
    for (auto* child : item->childItems())
        collectTexts(child, texts);
}

/// What can be used: all of the window, or what is above it.
std::vector<QQuickItem*> textsOf(QQuickWindow& window) {
    std::vector<QQuickItem*> texts;
    for (auto* child : window.contentItem()->childItems()) {
        if (child->inherits("QQuickOverlay") && child->isVisible()) collectTexts(child, texts);
    }
    if (texts.empty()) collectTexts(window.contentItem(), texts);
    return texts;
}

/// The pixels of an item that can be seen, in a picture of its window.
QRect shownPart(QQuickItem& item, double scale) {
    auto part = item.mapRectToScene({0, 0, item.width(), item.height()});
    for (auto* above = item.parentItem(); above; above = above->parentItem()) {
        if (above->clip() || !above->parentItem())
            part &= above->mapRectToScene({0, 0, above->width(), above->height()});
    }
    return QRectF(part.topLeft() * scale, part.size() * scale).toAlignedRect();
}

/// Where the strokes of a text are whole, as at their edges they are mixed with what is behind
/// them; 0 where nothing of it is seen.
double contrastIn(const QRect& part, const QImage& with, const QImage& without) {
    struct Pixel {
        int change;
        double contrast;
    };
    std::vector<Pixel> pixels;
    int most = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            const auto one = with.pixel(x, y);
            const auto other = without.pixel(x, y);
            if (one == other) continue;
            pixels.push_back({distance(one, other), contrast(one, other)});
            most = std::max(most, pixels.back().change);
        }
    }
    std::erase_if(pixels, [&](const Pixel& pixel) { return pixel.change < most * 0.9; });
    if (pixels.empty()) return 0;
    std::ranges::sort(pixels, {}, &Pixel::contrast);
    return pixels[pixels.size() / 2].contrast;
}

} // namespace

QStringList faintTexts(QQuickWindow& window) {
    const auto texts = textsOf(window);
    const auto with = window.grabWindow();
    std::vector<QVariant> colors;
    for (auto* text : texts) {
        colors.push_back(text->property("color"));
        text->setProperty("color", QColor(Qt::transparent));
    }
    const auto without = window.grabWindow();
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i]->setProperty("color", colors[i]);

    QStringList faint;
    for (auto* text : texts) {
        if (!text->isEnabled()) continue;
        const double scale = window.effectiveDevicePixelRatio();
        const auto part = shownPart(*text, scale) & with.rect();
        const auto font = text->property("font").value<QFont>();
        // At an edge that cuts its only line, no stroke need be whole.
        if (part.height() < font.pixelSize() * scale) continue;
        const double found = contrastIn(part, with, without);
        const bool isSymbol = font.family() == Symbols::fontFamily();
        const auto what = text->property(isSymbol ? "symbol" : "text");
        const double least = !isSymbol             ? leastOfTexts
                             : what == "dots.grip" ? leastOfHandles
                                                   : leastOfSymbols;
        if (found == 0 || found >= least) continue;
        faint.append(QStringLiteral("\"%1\" stands out by %2 to 1 only, at %3, %4")
                         .arg(what.toString())
                         .arg(found, 0, 'f', 2)
                         .arg(part.x())
                         .arg(part.y()));
    }
    return faint;
}

} // namespace corvane
