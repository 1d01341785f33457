#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "Platform/Alert.h"
#include "Platform/BinaryMessenger.h"
#include "Platform/Image.h"
#include "Platform/Registration.h"
#include "Platform/UrlSession.h"
#include "Tests/Contract/ContractMicrophones.h"

namespace zephyx {

class Platform;
class UserDefaults;

/// One piece of data that a program offers on the pasteboard.
struct PasteboardItem {
  std::string type;  ///< a `pasteboardType`, or any other type the system can carry
  Bytes data;
};

/// How a web server answers a request.
struct WebReply {
  int status = 200;
  std::string body;
  std::string location;  ///< where it sends its visitors, if anywhere
  double interval = 0;   ///< seconds between two bytes of the body; 0 for all at once
};

/// A desktop with other programs and a user in it: all that a contract suite needs besides the
/// services under test. Every test gets a fresh one; its own windows and programs are gone when it
/// is destroyed. Main thread. Calls return when what they did can be seen by other programs; what
/// the host's services show of it may need `runUntil`.
class ContractDesktop {
 public:
  virtual ~ContractDesktop() = default;

  virtual Platform& platform() = 0;

  /// Lets the desktop live (main loop, queues, other programs) until `condition`, asked on the main
  /// thread, holds. False when it did not within `deadline` seconds.
  virtual bool runUntil(const std::function<bool()>& condition, double deadline = 5) = 0;

  /// For "nothing happens": lets `seconds` pass.
  void pass(double seconds) {
    runUntil([] { return false; }, seconds);
  }

  // Pasteboard

  virtual bool announcesPasteboardChanges() const = 0;
  /// Another program takes the pasteboard over and offers `items`, in this order.
  virtual void otherProgramCopies(const std::vector<PasteboardItem>& items) = 0;
  /// Another program takes the pasteboard over, says that it offers `types`, and never hands over
  /// any data.
  virtual void hungProgramCopies(const std::vector<std::string>& types) = 0;
  /// What another program gets when it asks the pasteboard for a type; nothing when not offered.
  virtual std::optional<Bytes> otherProgramPastes(const std::string& type) = 0;

  // Another application, with one window with a text field

  /// Starts it, at most once in a test; it is in front and has the keyboard when this returns.
  virtual void startOtherApplication() = 0;
  virtual void bringOtherApplicationToFront() = 0;
  /// What was typed and pasted into its text field.
  virtual std::string otherApplicationText() = 0;
  /// It ends, its window with it.
  virtual void quitOtherApplication() = 0;

  // The user's own keyboard

  /// Presses and releases a key (a `keyCode`) with modifiers (`eventModifier` bits).
  virtual void pressKey(std::uint16_t keyCode, std::uint64_t modifierFlags) = 0;
  /// Holds modifiers down until `releaseModifiers`.
  virtual void holdModifiers(std::uint64_t modifierFlags) = 0;
  virtual void releaseModifiers() = 0;
  /// Another program owns a system-wide hot key while the registration lives.
  [[nodiscard]] virtual Registration otherProgramHoldsHotKey(std::uint32_t keyCode,
                                                             std::uint32_t carbonModifiers) = 0;

  // Displays

  /// How bright white is on the one display, which is an external one without a wire: the share of
  /// its full strength, as the display gets it.
  virtual double whiteLevel() = 0;

  // The status menu

  /// Titles of the rows of the open menu, from top to bottom, "-" for separators, hidden rows left
  /// out; nothing when no menu is open.
  virtual std::optional<std::vector<std::string>> openMenuRows() = 0;
  /// The user picks the row with this title in the open menu, which closes it.
  virtual void chooseMenuRow(const std::string& title) = 0;
  /// The user closes the open menu without a choice.
  virtual void dismissMenu() = 0;

  // Alerts

  /// The question on top; nothing when none is to be seen.
  virtual std::optional<Alert> shownAlert() = 0;
  /// The user presses this button of the question on top.
  virtual void clickAlertButton(const std::string& title) = 0;

  virtual ContractMicrophones& microphones() = 0;

  // Engines and stores

  /// The screen's end of the engine that last ran `entryPoint`; null when none did.
  virtual std::shared_ptr<BinaryMessenger> screenMessenger(const std::string& entryPoint) = 0;
  /// The user defaults as the next start of the host finds them.
  virtual std::unique_ptr<UserDefaults> reopenUserDefaults() = 0;
  /// An encoded picture that the system can read, of one colour, at 72 pixels to the inch.
  virtual Bytes encodedPicture(PixelSize size) = 0;

  // A web server whose certificate the desktop trusts

  /// Starts it, at most once in a test; its address, such as "https://127.0.0.1:4711".
  virtual std::string startWebServer() = 0;
  /// What it answers the next request that has no reply yet.
  virtual void webServerReplies(const WebReply& reply) = 0;
  /// The requests that it got, the oldest first, with their paths as URLs.
  virtual std::vector<UrlRequest> webRequests() = 0;

  // Sensors

  /// What the sensor on the processor's die says, in °C; nothing takes it out. At first the machine
  /// has no sensor.
  virtual void setDieTemperature(std::optional<double> celsius) = 0;

  // Software updates. The host's own version is lower than 2.

  /// What the update feed holds from now on.
  virtual void offerUpdate(const std::string& version) = 0;
  /// Lets the time of the first scheduled check come; the check itself may take a moment more.
  virtual void reachTimeOfUpdateCheck() = 0;
};

/// Makes the desktop of one test. The name tells runs apart in the names of the tests.
struct ContractDesktopFactory {
  const char* name;
  std::function<std::unique_ptr<ContractDesktop>()> make;

  /// How GoogleTest shows it.
  friend std::ostream& operator<<(std::ostream& stream, const ContractDesktopFactory& factory) {
    return stream << factory.name;
  }
};

}  // namespace zephyx
