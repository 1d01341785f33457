#include "Tests/Contract/LinuxContractDesktop.h"

#include <QtCore/QBuffer>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <cmath>
#include <map>
#include <stdexcept>
#include <utility>

#include "Platform/Events.h"
#include "Platform/HotKeys.h"
#include "Platform/Linux/Engines/ScreenProgram.h"
#include "Platform/Linux/LinuxUserDefaults.h"
#include "Platform/Linux/X11.h"
#include "Platform/Pasteboard.h"
#include "Platform/Platform.h"
#include "Tests/Desktop/DesktopRamps.h"

namespace zephyx {
namespace {

/// Where the keys that the suites press lie on a PC keyboard, as X counts them.
std::uint8_t xKey(std::uint32_t keyCode) {
  static const std::map<std::uint32_t, std::uint8_t> keys{{0, key::A},
                                                          {9, key::V},
                                                          {17, key::T},
                                                          {35, key::P},
                                                          {36, key::Return},
                                                          {keyCode::space, key::Space},
                                                          {keyCode::escape, key::Escape},
                                                          {keyCode::leftArrow, key::Left},
                                                          {keyCode::rightArrow, key::Right}};
  return keys.at(keyCode);
}

std::vector<std::uint8_t> modifierKeys(std::uint64_t flags) {
  std::vector<std::uint8_t> keys;
  if (flags & eventModifier::control) keys.push_back(key::Control);
  if (flags & eventModifier::option) keys.push_back(key::Alt);
  if (flags & eventModifier::shift) keys.push_back(key::Shift);
  if (flags & eventModifier::command) keys.push_back(key::Super);
  return keys;
}

std::uint16_t modifierMask(std::uint32_t carbon) {
  std::uint16_t mask = 0;
  if (carbon & carbonModifier::control) mask |= XCB_MOD_MASK_CONTROL;
  if (carbon & carbonModifier::option) mask |= XCB_MOD_MASK_1;
  if (carbon & carbonModifier::shift) mask |= XCB_MOD_MASK_SHIFT;
  if (carbon & carbonModifier::command) mask |= XCB_MOD_MASK_4;
  return mask;
}

/// What programs on this desktop call a type of the pasteboard.
std::string targetOf(const std::string& type) {
  static const std::map<std::string, std::string> targets{
      {pasteboardType::string, "UTF8_STRING"},
      {pasteboardType::url, "_NETSCAPE_URL"},
      {pasteboardType::fileUrl, "text/uri-list"},
      {pasteboardType::png, "image/png"},
      {pasteboardType::tiff, "image/tiff"},
      {"org.nspasteboard.ConcealedType", "x-kde-passwordManagerHint"}};
  const auto found = targets.find(type);
  return found == targets.end() ? type : found->second;
}

/// The screens' ends of the engines that run, by entry point.
std::map<std::string, std::shared_ptr<BinaryMessenger>>& screenEnds() {
  static std::map<std::string, std::shared_ptr<BinaryMessenger>> ends;
  return ends;
}

/// A program that does nothing: the suites speak for it.
class SilentProgram final : public ScreenProgram {
 public:
  QUrl viewSource() const override { return {}; }
  QObject* controller() override { return &controller_; }

 private:
  QObject controller_;
};

QMenu* openMenu() {
  for (auto* widget : QApplication::topLevelWidgets()) {
    auto* menu = qobject_cast<QMenu*>(widget);
    if (menu && menu->isVisible()) return menu;
  }
  return nullptr;
}

/// The question with the keyboard, once the server shows it.
QDialog* openAlert() {
  auto* dialog = qobject_cast<QDialog*>(QApplication::activeWindow());
  return dialog && dialog->isVisible() ? dialog : nullptr;
}

std::string titleOf(const QAction& action) {
  if (action.isSeparator()) return "-";
  return action.text().section(QLatin1Char('\t'), 0, 0).replace("&&", "&").toStdString();
}

}  // namespace

std::unique_ptr<ScreenProgram> makeScreenProgram(const std::string& entryPoint,
                                                 ScreenServices services) {
  if (entryPoint != "contractMain") return nullptr;
  screenEnds()[entryPoint] = services.messenger;
  return std::make_unique<SilentProgram>();
}

LinuxContractDesktop::LinuxContractDesktop() {
  desktop_.enter();
  qputenv("SSL_CERT_FILE", HttpsServer::certificateIn(desktop_.home()).c_str());
  setenv("ZEPHYX_HWMON", sensors_.folder().c_str(), 1);
  updateServer_.letGoOfApplication();
  qputenv("ZEPHYX_UPDATE_FEED", updateFeed_.address().toUtf8());
  qputenv("ZEPHYX_UPDATE_KEY", updateFeed_.publicKey().toBase64());
  static char name[] = "linux_contract_tests";
  static char* arguments[] = {name, nullptr};
  platform_ = makePlatform(1, arguments);
  if (!platform_) throw std::runtime_error("another instance runs on the new desktop");
}

LinuxContractDesktop::~LinuxContractDesktop() {
  screenEnds().clear();
}

bool LinuxContractDesktop::runUntil(const std::function<bool()>& condition, double deadline) {
  return waitFor(
      [&] {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return condition();
      },
      std::chrono::milliseconds(std::lround(deadline * 1000)));
}

void LinuxContractDesktop::copy(const std::vector<PasteboardItem>& items, bool hangs) {
  ClipboardProgram::Formats formats;
  for (const auto& item : items) {
    formats.emplace_back(targetOf(item.type), std::string(item.data.begin(), item.data.end()));
  }
  if (!clipboardProgram_) clipboardProgram_ = std::make_unique<ClipboardProgram>();
  ClipboardProgram::Manners manners;
  manners.answersData = !hangs;
  clipboardProgram_->setManners(manners);
  clipboardProgram_->copy(std::move(formats));
}

void LinuxContractDesktop::otherProgramCopies(const std::vector<PasteboardItem>& items) {
  copy(items, false);
}

void LinuxContractDesktop::hungProgramCopies(const std::vector<std::string>& types) {
  std::vector<PasteboardItem> items;
  for (const auto& type : types) items.push_back({type, {}});
  copy(items, true);
}

std::optional<Bytes> LinuxContractDesktop::otherProgramPastes(const std::string& type) {
  const bool isUrl = type == pasteboardType::url || type == pasteboardType::fileUrl;
  auto [status, output] = desktop_.run({"xclip", "-selection", "clipboard", "-out", "-target",
                                        isUrl ? std::string("text/uri-list") : targetOf(type)});
  if (status != 0) return std::nullopt;
  if (isUrl) output.resize(output.find_last_not_of("\r\n") + 1);
  return Bytes(output.begin(), output.end());
}

void LinuxContractDesktop::startOtherApplication() {
  otherApplication_ = std::make_unique<TargetProgram>(desktop_, TargetProgram::Kind::Qt);
}

void LinuxContractDesktop::bringOtherApplicationToFront() {
  if (!otherApplication_->activate()) throw std::runtime_error("it does not come to the front");
}

std::string LinuxContractDesktop::otherApplicationText() {
  return otherApplication_->text();
}

void LinuxContractDesktop::quitOtherApplication() {
  const auto window = otherApplication_->window().id;
  otherApplication_->process().terminate();
  if (!waitFor([&] { return !desktop_.windows().exists(window); })) {
    throw std::runtime_error("the window of the ended program stays");
  }
}

void LinuxContractDesktop::pressKey(std::uint16_t keyCode, std::uint64_t modifierFlags) {
  const auto modifiers = modifierKeys(modifierFlags);
  for (const auto each : modifiers) desktop_.input().pressKey(each);
  desktop_.input().tap(xKey(keyCode));
  for (auto each = modifiers.rbegin(); each != modifiers.rend(); ++each) {
    desktop_.input().releaseKey(*each);
  }
}

void LinuxContractDesktop::holdModifiers(std::uint64_t modifierFlags) {
  heldModifiers_ = modifierKeys(modifierFlags);
  for (const auto each : heldModifiers_) desktop_.input().pressKey(each);
}

void LinuxContractDesktop::releaseModifiers() {
  for (const auto each : std::exchange(heldModifiers_, {})) desktop_.input().releaseKey(each);
}

Registration LinuxContractDesktop::otherProgramHoldsHotKey(std::uint32_t keyCode,
                                                           std::uint32_t carbonModifiers) {
  const auto program = std::make_shared<X11Connection>();
  const auto hold =
      xcb_grab_key_checked(program->get(), 0, program->root(), modifierMask(carbonModifiers),
                           xKey(keyCode), XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  if (XReply<xcb_generic_error_t>(xcb_request_check(program->get(), hold))) {
    throw std::runtime_error("the hot key is taken already");
  }
  return Registration([program, keyCode, carbonModifiers] {
    const auto release = xcb_ungrab_key_checked(program->get(), xKey(keyCode), program->root(),
                                                modifierMask(carbonModifiers));
    const XReply<xcb_generic_error_t> error(xcb_request_check(program->get(), release));
  });
}

double LinuxContractDesktop::whiteLevel() {
  DesktopRamps ramps;
  const auto top = ramps.ramp(ramps.outputs().at(0))[0].back();
  // A server whose ramp nobody has set yet calls it black, and shows everything.
  return top == 0 ? 1 : top / 65535.0;
}

std::optional<std::vector<std::string>> LinuxContractDesktop::openMenuRows() {
  const auto* menu = openMenu();
  if (!menu) return std::nullopt;
  std::vector<std::string> rows;
  for (const auto* action : menu->actions()) {
    if (action->isVisible()) rows.push_back(titleOf(*action));
  }
  return rows;
}

void LinuxContractDesktop::chooseMenuRow(const std::string& title) {
  // The server shows the window some time after the toolkit has asked for it.
  DesktopWindows& windows = desktop_.windows();
  runUntil([&] { return windows.describe(static_cast<WindowId>(openMenu()->winId())).viewable; },
           5);
  const auto* menu = openMenu();
  for (auto* action : menu->actions()) {
    if (!action->isVisible() || titleOf(*action) != title) continue;
    const auto place = menu->mapToGlobal(menu->actionGeometry(action).center());
    desktop_.input().movePointer(place.x(), place.y());
    // A menu that opened under a moving pointer ignores the release of the click that opened it.
    pass(0.1);
    desktop_.input().pressButton();
    pass(0.02);
    desktop_.input().releaseButton();
    return;
  }
  throw std::runtime_error("no row " + title);
}

void LinuxContractDesktop::dismissMenu() {
  desktop_.input().tap(key::Escape);
}

std::optional<Alert> LinuxContractDesktop::shownAlert() {
  const auto* dialog = openAlert();
  if (!dialog) return std::nullopt;
  Alert alert{dialog->windowTitle().toStdString(), "", {}};
  for (const auto* label : dialog->findChildren<QLabel*>()) {
    const auto text = label->text().toStdString();
    if (!text.empty() && text != alert.message) alert.informativeText = text;
  }
  for (const auto* button : dialog->findChildren<QPushButton*>()) {
    alert.buttons.push_back(button->text().replace("&&", "&").toStdString());
  }
  return alert;
}

void LinuxContractDesktop::clickAlertButton(const std::string& title) {
  const auto* dialog = openAlert();
  for (const auto* button : dialog->findChildren<QPushButton*>()) {
    if (button->text().replace("&&", "&").toStdString() != title) continue;
    const auto place = button->mapToGlobal(button->rect().center());
    desktop_.input().click(place.x(), place.y());
    return;
  }
  throw std::runtime_error("no button " + title);
}

std::shared_ptr<BinaryMessenger> LinuxContractDesktop::screenMessenger(
    const std::string& entryPoint) {
  const auto found = screenEnds().find(entryPoint);
  return found == screenEnds().end() ? nullptr : found->second;
}

std::unique_ptr<UserDefaults> LinuxContractDesktop::reopenUserDefaults() {
  return std::make_unique<LinuxUserDefaults>((desktop_.configHome() / "com.zephyx.app").string(),
                                             platform_->systemLog());
}

Bytes LinuxContractDesktop::encodedPicture(PixelSize size) {
  QImage picture(size.wide, size.high, QImage::Format_RGB32);
  picture.fill(QColor(40, 90, 160));
  picture.setDotsPerMeterX(2835);
  picture.setDotsPerMeterY(2835);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  picture.save(&buffer, "PNG");
  return Bytes(bytes.begin(), bytes.end());
}

std::string LinuxContractDesktop::startWebServer() {
  webServer_ = std::make_unique<HttpsServer>(desktop_.home());
  return webServer_->address();
}

void LinuxContractDesktop::webServerReplies(const WebReply& reply) {
  HttpsReply answer{.status = reply.status,
                    .body = reply.body,
                    .interval = std::chrono::milliseconds(std::lround(reply.interval * 1000))};
  if (!reply.location.empty()) answer.headers = "Location: " + reply.location + "\r\n";
  webServer_->reply(std::move(answer));
}

void LinuxContractDesktop::setDieTemperature(std::optional<double> celsius) {
  if (celsius) {
    sensors_.setProcessor(std::to_string(std::lround(*celsius * 1000)));
  } else {
    sensors_.remove("hwmon0");
  }
}

void LinuxContractDesktop::offerUpdate(const std::string& version) {
  updateFeed_.offer(QByteArray::fromStdString(version), "package");
}

void LinuxContractDesktop::reachTimeOfUpdateCheck() {
  runUntil([&] { return updateServer_.requests("/feed.xml") > 0; }, 20);
}

}  // namespace zephyx
