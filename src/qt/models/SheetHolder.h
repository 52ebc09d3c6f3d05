#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <utility>

namespace corvane {

/// Keeps the model of one sheet while it is up, and a closed one until the next, as its view goes a
/// turn later. A model says by its signal `closed` that its sheet is to go.
template <typename Model>
class SheetHolder {
public:
    /// `changed` is called when another sheet is up, or none.
    explicit SheetHolder(std::function<void()> changed) : changed_(std::move(changed)) {}

    /// Null while none is up.
    Model* sheet() const { return sheet_.get(); }

    void open(std::unique_ptr<Model> sheet) {
        sheet_ = std::move(sheet);
        QObject::connect(sheet_.get(), &Model::closed, sheet_.get(), [this] {
            // Its view says so again as it goes.
            if (!sheet_) return;
            closed_ = std::move(sheet_);
            changed_();
        });
        changed_();
    }

private:
    const std::function<void()> changed_;
    std::unique_ptr<Model> sheet_;
    std::unique_ptr<Model> closed_;
};

} // namespace corvane
