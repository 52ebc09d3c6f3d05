#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <memory>

/// The least that a Qt Quick program can show: one window with a colour.
int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\n"
                      "Window { width: 1000; height: 700; visible: true; color: \"#ECECEE\" }",
                      {});
    const std::unique_ptr<QObject> window(component.create());
    return window ? QGuiApplication::exec() : 1;
}
