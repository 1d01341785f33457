#pragma once

#include <functional>
#include <memory>

#include "Platform/Linux/Clipboard/SavedTargets.h"
#include "Platform/Linux/Clipboard/SharedBytes.h"
#include "Platform/Pasteboard.h"

namespace zephyx {

/// Finds the application of a process; null when it is unknown. Called on the reading thread.
using ApplicationForProcess = std::function<std::shared_ptr<RunningApplication>(int process)>;

/// What the host itself has put on the pasteboard. Immutable: a write makes a new object that
/// shares what the older one holds. Any thread.
class OwnedContents final : public PasteboardContents {
 public:
  explicit OwnedContents(ApplicationForProcess applicationForProcess);

  std::shared_ptr<OwnedContents> withString(const std::string& text) const;
  /// Null when `url` cannot stand in a list of URLs.
  std::shared_ptr<OwnedContents> withUrl(const std::string& url) const;
  std::shared_ptr<OwnedContents> withPng(Bytes png) const;
  std::shared_ptr<OwnedContents> withSaved(std::shared_ptr<const SavedTargets> saved) const;
  /// With what `other` holds and this object does not; other programs are asked not to keep it:
  /// they have seen it before.
  std::shared_ptr<OwnedContents> withOld(const OwnedContents& other) const;

  std::vector<std::string> types() const override;
  std::optional<Bytes> data(const std::string& type) const override;
  std::optional<std::string> string(const std::string& type) const override;
  std::shared_ptr<RunningApplication> source() const override;

  /// What other programs are told that they can ask for; empty when there is nothing at all.
  std::vector<std::string> targets() const;

  struct Target {
    std::string type;  ///< the name of the property's type
    SharedBytes data;
    std::uint8_t format = 8;  ///< bits per item
  };
  /// Nothing when it is not among `targets`.
  std::optional<Target> target(const std::string& name) const;

 private:
  SharedBytes sharedData(const std::string& type) const;
  std::vector<std::string> writtenTargets() const;
  Target writtenTarget(const std::string& name) const;
  bool isFile() const;

  ApplicationForProcess applicationForProcess_;
  std::shared_ptr<const std::string> string_;
  std::shared_ptr<const std::string> url_;
  std::shared_ptr<const Bytes> png_;
  std::shared_ptr<const SavedTargets> saved_;
  bool isOld_ = false;
};

}  // namespace zephyx
