#include "Tests/Contract/SimulatedContractDesktop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace zephyx {

SimulatedContractDesktop::SimulatedContractDesktop(Kind kind) {
  machine_.pasteboard.setAnnouncesChanges(kind == Kind::announcing);
  machine_.workspace.setUsesCooperativeActivation(kind == Kind::polled);
  machine_.workspace.setActivationTime(0.02);
}

SimulatedContractDesktop::~SimulatedContractDesktop() {
  for (const auto& fault : machine_.faults.all()) ADD_FAILURE() << fault;
}

bool SimulatedContractDesktop::runUntil(const std::function<bool()>& condition, double deadline) {
  return machine_.dispatch.runUntil(condition, deadline);
}

bool SimulatedContractDesktop::announcesPasteboardChanges() const {
  return machine_.pasteboard.announcesChanges();
}

void SimulatedContractDesktop::otherProgramCopies(const std::vector<PasteboardItem>& items) {
  SimulatedPasteboardOwner owner;
  for (const auto& item : items) owner.items.emplace_back(item.type, item.data);
  machine_.pasteboard.otherProgramCopies(std::move(owner));
}

void SimulatedContractDesktop::hungProgramCopies(const std::vector<std::string>& types) {
  SimulatedPasteboardOwner owner;
  owner.answerTime = 1000;
  for (const auto& type : types) owner.items.emplace_back(type, Bytes{});
  machine_.pasteboard.otherProgramCopies(std::move(owner));
}

std::optional<Bytes> SimulatedContractDesktop::otherProgramPastes(const std::string& type) {
  return machine_.pasteboard.otherProgramPastes(type);
}

void SimulatedContractDesktop::startOtherApplication() {
  otherApplication_ = machine_.workspace.start({"org.example.editor", "Editor", nullptr});
  bringOtherApplicationToFront();
}

void SimulatedContractDesktop::bringOtherApplicationToFront() {
  machine_.workspace.bringToFront(otherApplication_);
}

std::string SimulatedContractDesktop::otherApplicationText() {
  return otherApplication_->text;
}

void SimulatedContractDesktop::quitOtherApplication() {
  otherApplication_->acceptsRequests = false;
  if (otherApplication_->isActive()) machine_.workspace.bringToFront(nullptr);
}

void SimulatedContractDesktop::pressKey(std::uint16_t keyCode, std::uint64_t modifierFlags) {
  machine_.keyboard.press(keyCode, modifierFlags);
}

void SimulatedContractDesktop::holdModifiers(std::uint64_t modifierFlags) {
  machine_.keyboard.holdModifiers(modifierFlags);
}

void SimulatedContractDesktop::releaseModifiers() {
  machine_.keyboard.holdModifiers(0);
}

Registration SimulatedContractDesktop::otherProgramHoldsHotKey(std::uint32_t keyCode,
                                                               std::uint32_t carbonModifiers) {
  const SimulatedHotKeys::Combination combination{keyCode, carbonModifiers};
  machine_.hotKeys.otherProgramClaims(combination);
  return Registration([this, combination] { machine_.hotKeys.otherProgramReleases(combination); });
}

double SimulatedContractDesktop::whiteLevel() {
  return machine_.displays.transferMaximum(display_).value_or(1);
}

std::optional<std::vector<std::string>> SimulatedContractDesktop::openMenuRows() {
  const auto item = machine_.statusBar.item();
  if (!item || !item->menuIsOpen()) return std::nullopt;
  return item->shownRows();
}

void SimulatedContractDesktop::chooseMenuRow(const std::string& title) {
  machine_.statusBar.item()->chooseTitle(title);
}

void SimulatedContractDesktop::dismissMenu() {
  machine_.statusBar.item()->cancelTrackingWithoutAnimation();
}

std::optional<Alert> SimulatedContractDesktop::shownAlert() {
  return machine_.alerts.shown();
}

void SimulatedContractDesktop::clickAlertButton(const std::string& title) {
  const auto titles = shownAlert().value().buttons;
  const auto found = std::find(titles.begin(), titles.end(), title);
  machine_.alerts.press(static_cast<std::size_t>(found - titles.begin()));
}

std::shared_ptr<BinaryMessenger> SimulatedContractDesktop::screenMessenger(
    const std::string& entryPoint) {
  const auto engine = machine_.engines.engineRunning(entryPoint);
  return engine ? engine->screen().messenger() : nullptr;
}

std::unique_ptr<UserDefaults> SimulatedContractDesktop::reopenUserDefaults() {
  return std::make_unique<SimulatedUserDefaults>(machine_.userDefaults.store());
}

Bytes SimulatedContractDesktop::encodedPicture(PixelSize size) {
  return SimulatedImages::encoded(size);
}

void SimulatedContractDesktop::webServerReplies(const WebReply& reply) {
  machine_.urlSession.reply(
      {.response = UrlResponse{reply.status, Bytes(reply.body.begin(), reply.body.end())},
       .delay = reply.interval * static_cast<double>(reply.body.size())});
}

std::vector<UrlRequest> SimulatedContractDesktop::webRequests() {
  auto requests = machine_.urlSession.requests();
  for (auto& request : requests) request.url.erase(0, std::string(webAddress).size());
  return requests;
}

void SimulatedContractDesktop::setDieTemperature(std::optional<double> celsius) {
  auto& sensors = machine_.temperatureSensors.sensors;
  sensors.clear();
  if (celsius) sensors.push_back({"PMU tdie1", *celsius});
}

void SimulatedContractDesktop::offerUpdate(const std::string& version) {
  machine_.softwareUpdate.offer(version);
}

void SimulatedContractDesktop::reachTimeOfUpdateCheck() {
  machine_.softwareUpdate.runScheduledCheck(false);
}

}  // namespace zephyx
