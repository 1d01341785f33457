#pragma once

#include "Tests/Contract/ContractDesktop.h"
#include "Tests/Contract/LinuxContractMicrophones.h"
#include "Tests/Desktop/ClipboardProgram.h"
#include "Tests/Desktop/HttpsServer.h"
#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Desktop/VirtualDesktop.h"

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

  void pressKey(std::uint16_t keyCode, std::uint64_t modifierFlags) override;
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

  std::string startWebServer() override;
  void webServerReplies(const WebReply& reply) override;
  std::vector<UrlRequest> webRequests() override { return webServer_->requests(); }

 private:
  void copy(const std::vector<PasteboardItem>& items, bool hangs);

  VirtualDesktop desktop_;
  LinuxContractMicrophones microphones_{desktop_};
  std::unique_ptr<Platform> platform_;
  std::unique_ptr<ClipboardProgram> clipboardProgram_;
  std::unique_ptr<TargetProgram> otherApplication_;
  std::unique_ptr<HttpsServer> webServer_;
};

}  // namespace zephyx
