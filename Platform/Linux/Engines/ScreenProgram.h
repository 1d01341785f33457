#pragma once

#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

class Directories;
class Keychain;
class UserDefaults;

/// Reads the clipboard's plain text and answers on the main thread, never inside the call: nothing
/// when there is none, or when its owner does not answer in time. The toolkit's own clipboard makes
/// the main thread wait for the owner.
using ClipboardTextReader =
    std::function<void(std::function<void(std::optional<std::string>)> answer)>;

/// Puts plain text on the clipboard, in place of what was there. What is pasted from then on is
/// this text.
using ClipboardTextWriter = std::function<void(std::string text)>;

/// What a screen program may use. Outlives the program.
struct ScreenServices {
  std::shared_ptr<BinaryMessenger> messenger;  ///< the engine's end: talks to the host
  UserDefaults& userDefaults;                  ///< shared preferences, keys begin with "flutter."
  Directories& directories;
  ClipboardTextReader readClipboardText;
  ClipboardTextWriter writeClipboardText;
  Keychain& keychain;
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

/// Starts the named entry point ("main", "clipboardMain", "translateMain"); null when there is none
/// of that name. Defined by the library that holds the screens.
std::unique_ptr<ScreenProgram> makeScreenProgram(const std::string& entryPoint,
                                                 ScreenServices services);

}  // namespace zephyx
