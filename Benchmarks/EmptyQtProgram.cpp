// The least that a program of this toolkit with a drawn window can be: what the start and the
// memory of Zephyx are compared with.
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  QQmlApplicationEngine engine;
  engine.loadData(R"(
    import QtQuick
    Window {
      visible: true; width: 640; height: 480
      Row { Repeater { model: ["red", "green", "blue", "black", "orange"]
        Rectangle { width: 40; height: 40; color: modelData } } }
      Text { y: 60; text: "An empty program" }
    })");
  return engine.rootObjects().isEmpty() ? 1 : QApplication::exec();
}
