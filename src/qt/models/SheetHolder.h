#pragma once

#include "qt/models/WorkspaceSheetModel.h"
#include "ui/WorkspaceSheet.h"

#include <QObject>
#include <memory>

namespace corvane {

/// Keeps one sheet while it is up, and a closed one until the next, as its view goes a turn later.
class SheetHolder : public QObject {
    Q_OBJECT

public:
    WorkspaceSheetModel* sheet() const { return sheet_.get(); }

    void open(std::unique_ptr<WorkspaceSheet> sheet) {
        sheet_ = std::make_unique<WorkspaceSheetModel>(std::move(sheet));
        connect(sheet_.get(), &WorkspaceSheetModel::closed, this, [this] {
            // Its view says so again as it goes.
            if (!sheet_) return;
            closed_ = std::move(sheet_);
            emit changed();
        });
        emit changed();
    }

signals:
    void changed();

private:
    std::unique_ptr<WorkspaceSheetModel> sheet_;
    std::unique_ptr<WorkspaceSheetModel> closed_;
};

} // namespace corvane
