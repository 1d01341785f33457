#pragma once

#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <memory>
#include <string>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

class Directories;
class UserDefaults;

/// What a screen program may use. Outlives the program.
struct ScreenServices {
  std::shared_ptr<BinaryMessenger> messenger;  ///< the engine's end: talks to the host
  UserDefaults& userDefaults;                  ///< shared preferences, keys begin with "flutter."
  Directories& directories;
};

/// The program that runs in an engine from its entry point on, with or without a picture. Main
/// thread.
class ScreenProgram {
 public:
  virtual ~ScreenProgram() = default;
  /// The QML component of the picture. Its root is an Item, created when the picture is first
  /// needed, with its required property `screen` set to `controller()`.
  virtual QUrl viewSource() const = 0;
  /// Owned by the program.
  virtual QObject* controller() = 0;
};

/// Starts the named entry point ("main", "clipboardMain"); null when there is none of that name.
/// Defined by the library that holds the screens.
std::unique_ptr<ScreenProgram> makeScreenProgram(const std::string& entryPoint,
                                                 ScreenServices services);

}  // namespace zephyx
