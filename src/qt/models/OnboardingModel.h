#pragma once

#include "qt/models/ChangeRelay.h"

#include <QObject>

#include <QtQml/qqmlregistration.h>

namespace corvane {

class OnboardingView;

/// The tour for its window.
class OnboardingModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to its window")
    Q_PROPERTY(int stepCount READ stepCount CONSTANT)
    Q_PROPERTY(int currentStep READ currentStep NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY changed)
    Q_PROPERTY(QString description READ description NOTIFY changed)
    Q_PROPERTY(QString icon READ icon NOTIFY changed)
    /// The resource with the program's own picture; empty where it has none.
    Q_PROPERTY(QString applicationPicture READ applicationPicture CONSTANT)
    Q_PROPERTY(QString caption READ caption NOTIFY changed)
    Q_PROPERTY(QString mainButtonTitle READ mainButtonTitle NOTIFY changed)
    /// Empty where the step has no button of its own.
    Q_PROPERTY(QString actionTitle READ actionTitle NOTIFY changed)
    Q_PROPERTY(bool isFirst READ isFirst NOTIFY changed)

public:
    /// The state outlives the model.
    explicit OnboardingModel(OnboardingView& state);

    int stepCount() const;
    int currentStep() const;
    QString title() const;
    QString subtitle() const;
    QString description() const;
    QString icon() const;
    QString applicationPicture() const;
    QString caption() const;
    QString mainButtonTitle() const;
    QString actionTitle() const;
    bool isFirst() const;

    Q_INVOKABLE void previous();
    Q_INVOKABLE void pressMainButton();
    Q_INVOKABLE void skip();
    Q_INVOKABLE void pressAction();

signals:
    void changed();

private:
    OnboardingView& state_;
    ChangeRelay relay_;
};

} // namespace corvane
