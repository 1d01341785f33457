#pragma once

#include <functional>
#include <memory>

#include "Platform/Pasteboard.h"

namespace zephyx {

/// Finds the application of a process; null when it is unknown. Called on the reading thread.
using ApplicationForProcess = std::function<std::shared_ptr<RunningApplication>(int process)>;

/// Bytes and what keeps them alive.
struct SharedBytes {
  std::shared_ptr<const void> keeper;
  BytesView bytes;
};

/// What the host itself has put on the pasteboard. Immutable: a write makes a new object that
/// shares what the older one holds. Any thread.
class OwnedContents final : public PasteboardContents {
 public:
  explicit OwnedContents(ApplicationForProcess applicationForProcess);

  std::shared_ptr<OwnedContents> withString(const std::string& text) const;
  /// Null when `url` cannot stand in a list of URLs.
  std::shared_ptr<OwnedContents> withUrl(const std::string& url) const;
  std::shared_ptr<OwnedContents> withPng(Bytes png) const;

  std::vector<std::string> types() const override;
  std::optional<Bytes> data(const std::string& type) const override;
  std::optional<std::string> string(const std::string& type) const override;
  std::shared_ptr<RunningApplication> source() const override;

  /// What other programs are told that they can ask for.
  std::vector<std::string> targets() const;

  struct Target {
    std::string type;  ///< the name of the property's type
    SharedBytes data;
  };
  /// Nothing when it is not among `targets`.
  std::optional<Target> target(const std::string& name) const;

 private:
  SharedBytes sharedData(const std::string& type) const;
  bool isFile() const;

  ApplicationForProcess applicationForProcess_;
  std::shared_ptr<const std::string> string_;
  std::shared_ptr<const std::string> url_;
  std::shared_ptr<const Bytes> png_;
};

}  // namespace zephyx
