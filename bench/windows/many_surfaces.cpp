#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <memory>
#include <vector>

// A client of Wayland with as many windows as the argument says, which stay until it is killed.

namespace {

class Window : public QRasterWindow {
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(QRect(QPoint(), size()), Qt::white);
    }
};

} // namespace

int main(int count, char** words) {
    const QGuiApplication application(count, words);
    std::vector<std::unique_ptr<Window>> windows(count > 1 ? std::size_t(std::atoi(words[1])) : 1);
    for (std::size_t i = 0; i < windows.size(); ++i) {
        windows[i] = std::make_unique<Window>();
        windows[i]->setTitle("Window " + QString::number(i));
        windows[i]->resize(200, 120);
        windows[i]->show();
    }
    return QGuiApplication::exec();
}
