#include <QtGui/QGuiApplication>
#include <QtGui/QStyleHints>

#include "Platform/Linux/Engines/ScreenProgram.h"
#include "Screens/ClipboardScreenController.h"
#include "Screens/MainScreenController.h"
#include "Screens/TranslateScreenController.h"

// Made by the build; named here so that the linker takes it out of the static library.
extern void qml_register_types_Zephyx_Screens();

namespace zephyx {
namespace {

template <typename Controller>
class Program final : public ScreenProgram {
 public:
  Program(ScreenServices services, QUrl view)
      : controller_(std::move(services)), view_(std::move(view)) {}
  QUrl viewSource() const override { return view_; }
  QObject* controller() override { return &controller_; }

 private:
  Controller controller_;
  QUrl view_;
};

QUrl view(const char* file) {
  return QUrl(QLatin1String("qrc:/qt-project.org/imports/Zephyx/Screens/") + file);
}

void prepareToolkit() {
  static const bool once = [] {
    qml_register_types_Zephyx_Screens();
    // A blinking caret would draw the picture anew twice a second for as long as it is shown.
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    return true;
  }();
  static_cast<void>(once);
}

}  // namespace

std::unique_ptr<ScreenProgram> makeScreenProgram(const std::string& entryPoint,
                                                 ScreenServices services) {
  prepareToolkit();
  if (entryPoint == "main")
    return std::make_unique<Program<MainScreenController>>(std::move(services),
                                                           view("MainScreen.qml"));
  if (entryPoint == "clipboardMain")
    return std::make_unique<Program<ClipboardScreenController>>(std::move(services),
                                                                view("ClipboardScreen.qml"));
  if (entryPoint == "translateMain")
    return std::make_unique<Program<TranslateScreenController>>(std::move(services),
                                                                view("TranslateScreen.qml"));
  return nullptr;
}

}  // namespace zephyx
