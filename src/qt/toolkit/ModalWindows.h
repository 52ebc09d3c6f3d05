#pragma once

#include <QEventLoop>
#include <QObject>
#include <functional>
#include <memory>
#include <vector>

namespace corvane {

/// Windows of alerts and panels that are up until they are answered. Main thread.
class ModalWindows {
public:
    /// Takes a window or dialog in.
    void add(std::unique_ptr<QObject> shown);
    /// Hides it, and lets it and its models go a turn later, as this may run inside an event of its
    /// own. `listener` hears no more of them. Nothing where that was done before.
    void takeDown(const QObject& shown, const QObject& listener);

    /// Runs events until what `show` shows is answered, or the program ends; then an empty answer.
    template <typename Answer, typename Show>
    Answer untilAnswered(const Show& show, const QObject& listener) {
        Answer given{};
        bool isAnswered = false;
        QEventLoop loop;
        const QObject& shown = show([&](const Answer& answer) {
            given = answer;
            isAnswered = true;
            loop.quit();
        });
        // Events come while it is shown, too.
        if (!isAnswered) loop.exec();
        takeDown(shown, listener);
        return given;
    }

private:
    std::vector<std::unique_ptr<QObject>> up_;
};

} // namespace corvane
