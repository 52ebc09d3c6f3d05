#pragma once

#include "core/Preference.h"
#include "qt/models/ChangeRelay.h"

#include <QObject>
#include <functional>

#include <QtQml/qqmlregistration.h>

namespace corvane {

/// One preference that is on or off, for the switch that shows it.
class SwitchModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to its settings")
    Q_PROPERTY(bool isOn READ isOn WRITE set NOTIFY changed)

public:
    /// `signal` fires before the preference changes, which outlives this.
    SwitchModel(ChangeSignal& signal, Preference<bool>& preference)
        : SwitchModel(
              signal, [&preference] { return preference.get(); },
              [&preference](bool on) { preference = on; }) {}
    /// One that is more than a stored value.
    SwitchModel(ChangeSignal& signal, std::function<bool()> get, std::function<void(bool)> set)
        : get_(std::move(get)), set_(std::move(set)), relay_(signal, [this] { emit changed(); }) {}

    bool isOn() const { return get_(); }
    void set(bool on) { set_(on); }

signals:
    void changed();

private:
    const std::function<bool()> get_;
    const std::function<void(bool)> set_;
    ChangeRelay relay_;
};

} // namespace corvane
