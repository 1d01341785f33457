#pragma once

#include "Tests/Contract/ContractDesktop.h"
#include "Tests/Contract/LinuxContractMicrophones.h"
#include "Tests/Desktop/ClipboardProgram.h"
#include "Tests/Desktop/HttpsServer.h"
#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Desktop/UpdateFeed.h"
#include "Tests/Desktop/VirtualDesktop.h"
#include "Tests/Linux/SensorTree.h"

class QMenu;

namespace zephyx {

/// The real services on a private X desktop, with real programs and a user's fingers beside them.
class LinuxContractDesktop final : public ContractDesktop {
 public:
  LinuxContractDesktop();
  ~LinuxContractDesktop() override;

  Platform& platform() override { return *platform_; }
  bool runUntil(const std::function<bool()>& condition, double deadline) override;

  bool announcesPasteboardChanges() const override { return true; }
  void otherProgramCopies(const std::vector<PasteboardItem>& items) override;
  void hungProgramCopies(const std::vector<std::string>& types) override;
  std::optional<Bytes> otherProgramPastes(const std::string& type) override;

  void startOtherApplication() override;
  void bringOtherApplicationToFront() override;
  std::string otherApplicationText() override;
  void quitOtherApplication() override;

  void pressKey(std::uint16_t keyCode, std::uint64_t modifierFlags) override;
  void holdModifiers(std::uint64_t modifierFlags) override;
  void releaseModifiers() override;
  Registration otherProgramHoldsHotKey(std::uint32_t keyCode,
                                       std::uint32_t carbonModifiers) override;

  double whiteLevel() override;

  std::optional<std::vector<std::string>> openMenuRows() override;
  void chooseMenuRow(const std::string& title) override;
  void dismissMenu() override;

  std::optional<Alert> shownAlert() override;
  void clickAlertButton(const std::string& title) override;

  ContractMicrophones& microphones() override { return microphones_; }

  std::shared_ptr<BinaryMessenger> screenMessenger(const std::string& entryPoint) override;
  std::unique_ptr<UserDefaults> reopenUserDefaults() override;
  Bytes encodedPicture(PixelSize size) override;

  std::string startWebServer() override;
  void webServerReplies(const WebReply& reply) override;
  std::vector<UrlRequest> webRequests() override { return webServer_->requests(); }

  void setDieTemperature(std::optional<double> celsius) override;

  void offerUpdate(const std::string& version) override;
  void reachTimeOfUpdateCheck() override;

 private:
  void copy(const std::vector<PasteboardItem>& items, bool hangs);

  VirtualDesktop desktop_;
  SensorTree sensors_{desktop_.home() / "hwmon"};
  LinuxContractMicrophones microphones_{desktop_};
  HttpsServer updateServer_{desktop_.home(), HttpsServer::Protocol::http};
  UpdateFeed updateFeed_{updateServer_};
  std::unique_ptr<Platform> platform_;
  std::unique_ptr<ClipboardProgram> clipboardProgram_;
  std::unique_ptr<TargetProgram> otherApplication_;
  std::unique_ptr<HttpsServer> webServer_;
  std::vector<std::uint8_t> heldModifiers_;
};

}  // namespace zephyx
