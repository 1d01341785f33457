#include <gtest/gtest.h>

#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>

#include "Tests/Screens/StoreWriter.h"

int main(int argumentCount, char** arguments) {
  if (argumentCount == 3 && std::string_view(arguments[1]) == zephyx::storeWriterArgument)
    return zephyx::writeStoreUntilKilled(arguments[2]);
  // A developer may look at the tests on a real display; by default there is none.
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argumentCount, arguments);
  QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  QApplication application(argumentCount, arguments);
  return RUN_ALL_TESTS();
}
