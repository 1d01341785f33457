#pragma once

#include "Tests/Contract/ContractDesktop.h"
#include "Tests/Contract/SimulatedContractMicrophones.h"
#include "Tests/Simulated/SimulatedDesktop.h"

namespace zephyx {

/// The simulation as a machine for the contract suites.
class SimulatedContractDesktop final : public ContractDesktop {
 public:
  /// The two kinds of system that the simulation can be.
  enum class Kind { polled, announcing };
  explicit SimulatedContractDesktop(Kind kind);
  ~SimulatedContractDesktop() override;

  Platform& platform() override { return machine_.platform(); }
  bool runUntil(const std::function<bool()>& condition, double deadline) override;

  bool announcesPasteboardChanges() const override;
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

  std::string startWebServer() override { return webAddress; }
  void webServerReplies(const WebReply& reply) override;
  std::vector<UrlRequest> webRequests() override;

  void setDieTemperature(std::optional<double> celsius) override;

  void offerUpdate(const std::string& version) override;
  void reachTimeOfUpdateCheck() override;

 private:
  static constexpr const char* webAddress = "https://web.example";

  SimulatedDesktop machine_;
  SimulatedContractMicrophones microphones_{machine_.audioHardware};
  const std::uint32_t display_ =
      machine_.displays.plugIn(SimulatedDisplays::Kind::externalWithoutChannel);
  std::shared_ptr<SimulatedRunningApplication> otherApplication_;
};

}  // namespace zephyx
