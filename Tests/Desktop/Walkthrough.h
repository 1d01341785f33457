#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "Tests/Desktop/ChatServer.h"
#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Desktop/ZephyxProcess.h"
#include "Tests/Linux/SensorTree.h"

namespace zephyx {

/// The main job as a user does it, with programs of others, one picture and one sentence per step.
class Walkthrough {
 public:
  explicit Walkthrough(std::filesystem::path pictures);

  /// True when every step happened.
  bool run();

 private:
  /// Waits for the outcome, takes the picture and says what was seen, or that it was not.
  void step(const std::string& name, const std::string& words,
            const std::function<bool()>& happened);
  /// `step`, and no further when it did not happen.
  void mustStep(const std::string& name, const std::string& words,
                const std::function<bool()>& happened);

  void start();
  void copyThings();
  void pasteWithKeyboard();
  void pasteWithMouse();
  void pasteIntoTerminal();
  void searchAndPreview();
  void translateSelection();
  void menuAndMainWindow();

  void pressHotKey();
  bool panelHasKeyboard();
  bool panelIsGone();

  std::filesystem::path pictures_;
  int number_ = 0;
  int failures_ = 0;
  ChatServer server_{{"una línea", " traducida", " en el editor"}};
  VirtualDesktop desktop_;
  SensorTree sensors_{desktop_.home() / "hwmon"};
  std::unique_ptr<ZephyxProcess> program_;
  std::unique_ptr<TargetProgram> editor_;
  std::unique_ptr<TargetProgram> line_;
};

}  // namespace zephyx
