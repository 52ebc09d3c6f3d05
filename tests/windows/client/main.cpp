#include <QCloseEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>

// A client with one window: TITLE WIDTH HEIGHT LEAST-WIDTH LEAST-HEIGHT STEP-WIDTH STEP-HEIGHT and
// "closes" or "ignores", as it takes it to be asked to close; then the title of its dialog, if it
// shows one.

namespace {

class Window : public QRasterWindow {
public:
    Window(const QString& title, bool ignoresClose) : ignoresClose_(ignoresClose) {
        setTitle(title);
    }

private:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(QRect(QPoint(), size()), Qt::white);
    }
    void closeEvent(QCloseEvent* event) override { event->setAccepted(!ignoresClose_); }

    bool ignoresClose_;
};

} // namespace

int main(int count, char** words) {
    const QGuiApplication application(count, words);
    const auto arguments = application.arguments();
    if (arguments.size() < 9) return 1;
    const auto size = [&](int at) {
        return QSize(arguments[at].toInt(), arguments[at + 1].toInt());
    };
    Window window(arguments[1], arguments[8] == "ignores");
    window.resize(size(2));
    if (!size(4).isNull()) window.setMinimumSize(size(4));
    if (!size(6).isNull()) {
        window.setBaseSize(size(4));
        window.setSizeIncrement(size(6));
    }
    window.show();
    Window dialog(arguments.value(9), false);
    if (arguments.size() > 9) {
        dialog.setTransientParent(&window);
        dialog.setFlag(Qt::Dialog);
        dialog.resize(200, 100);
        dialog.show();
    }
    return QGuiApplication::exec();
}
