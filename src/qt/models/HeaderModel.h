#pragma once

#include "qt/models/ChangeRelay.h"
#include "qt/models/SheetHolder.h"
#include "qt/models/WorkspaceSheetModel.h"
#include "ui/WorkspaceSheet.h"

#include <QObject>
#include <functional>
#include <memory>

#include <QtQml/qqmlregistration.h>

namespace corvane {

class HeaderState;

/// The header for its view.
class HeaderModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to its window")
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY changed)
    Q_PROPERTY(bool isDarkMode READ isDarkMode NOTIFY changed)
    Q_PROPERTY(QString themeSymbol READ themeSymbol NOTIFY changed)
    Q_PROPERTY(QString themeTooltip READ themeTooltip NOTIFY changed)
    Q_PROPERTY(bool focusMode READ focusMode NOTIFY changed)
    Q_PROPERTY(QString focusModeTooltip READ focusModeTooltip NOTIFY changed)
    Q_PROPERTY(QString savingProblem READ savingProblem NOTIFY changed)
    /// The sheet for a new workspace while it is up, else null.
    Q_PROPERTY(corvane::WorkspaceSheetModel* newSpaceSheet READ newSpaceSheet NOTIFY sheetChanged)

public:
    using MakeSheet = std::function<std::unique_ptr<WorkspaceSheet>()>;

    /// The state outlives the model.
    HeaderModel(HeaderState& state, MakeSheet makeSheet);

    QString searchText() const;
    void setSearchText(const QString& text);
    bool isDarkMode() const;
    QString themeSymbol() const;
    QString themeTooltip() const;
    bool focusMode() const;
    QString focusModeTooltip() const;
    QString savingProblem() const;
    WorkspaceSheetModel* newSpaceSheet() const { return sheet_.sheet(); }

    Q_INVOKABLE void toggleTheme();
    Q_INVOKABLE void toggleFocusMode();
    Q_INVOKABLE void saveAgain();
    Q_INVOKABLE void openNewSpaceSheet() {
        sheet_.open(std::make_unique<WorkspaceSheetModel>(makeSheet_()));
    }

signals:
    void changed();
    void sheetChanged();

private:
    HeaderState& state_;
    const MakeSheet makeSheet_;
    SheetHolder<WorkspaceSheetModel> sheet_{[this] { emit sheetChanged(); }};
    ChangeRelay relay_;
};

} // namespace corvane
