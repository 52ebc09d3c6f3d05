#pragma once

#include <QObject>
#include <QString>

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// The symbols that the views name, as glyphs of one icon font.
class Symbols : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT)

public:
    static QString fontFamily() { return QStringLiteral("Material Icons"); }
    /// The text that draws the symbol in that font; a neutral one for a name that isn't known.
    Q_INVOKABLE static QString glyph(const QString& name);
    static bool isKnown(const QString& name);
};

} // namespace corvane
