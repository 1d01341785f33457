#pragma once

#include <QtCore/QSocketNotifier>
#include <cstdint>
#include <functional>
#include <future>
#include <map>
#include <memory>

#include "Platform/LifetimeGuard.h"
#include "Platform/Linux/Clipboard/FreedMemory.h"
#include "Platform/Linux/Clipboard/OwnedContents.h"
#include "Platform/Pasteboard.h"

namespace zephyx {

class ClipboardThread;
struct CopySnapshot;
struct SavedCopy;

/// The CLIPBOARD selection of the default display. Changes of other programs are announced by the
/// server; what was written here is offered to other programs at the end of the main loop's turn,
/// all at once.
class LinuxPasteboard final : public Pasteboard {
 public:
  /// `applicationForProcess` outlives every contents object.
  explicit LinuxPasteboard(ApplicationForProcess applicationForProcess);
  ~LinuxPasteboard() override;

  std::int64_t changeCount() const override { return changeCount_; }
  std::shared_ptr<PasteboardContents> contents() const override { return contents_; }
  Registration observeChanges(PasteboardReadPlan plan, std::function<void()> handler) override;
  std::int64_t clearContents() override;
  bool writeString(const std::string& text) override;
  bool writeUrl(const std::string& url) override;
  bool writeImage(const Image& image) override;
  void copyItems(std::function<void(std::shared_ptr<const PasteboardItems>)> done) const override;
  /// What is put back asks clipboard managers not to keep it.
  bool writeItems(const PasteboardItems& items) override;

  /// Returns when other programs get what was written here: before a key is typed that makes one
  /// of them paste. False when the server does not answer in time. Waits for the server, not for
  /// programs.
  bool waitUntilOffered();
  /// Offers what the host has on the pasteboard as the PRIMARY selection as well: terminals paste
  /// that one. Both are in effect when this returns true. False when another program has copied
  /// since. Waits for the server, not for programs.
  bool offerAsPrimary();

  /// Shows the text that is selected in the program of an X window as a copy of that program, as
  /// soon as the program has handed it over. Its selection and the clipboard stay as they are. For
  /// programs where selecting is copying.
  bool takeSelectedText(unsigned int window);

 private:
  class Items;
  using ItemsHandler = std::function<void(std::shared_ptr<const PasteboardItems>)>;

  void showNews();
  void showSaved(SavedCopy saved);
  void showCopy(CopySnapshot snapshot);
  bool write(std::shared_ptr<OwnedContents> contents);
  void offerLater();
  void offerNow();

  ApplicationForProcess applicationForProcess_;
  std::shared_ptr<ClipboardThread> thread_;
  QSocketNotifier announcements_;
  std::int64_t changeCount_ = 0;
  std::shared_ptr<PasteboardContents> contents_;
  std::shared_ptr<OwnedContents> owned_;  // null once another program has copied
  std::uint64_t ownWrites_ = 0;           // how often something was written to be offered
  bool isOfferPending_ = false;
  std::future<bool> offered_;  // of the newest offer, until somebody has waited for it
  mutable std::map<std::uint64_t, ItemsHandler> waitingForItems_;  // by question
  std::function<void()> handler_;
  std::uint64_t observer_ = 0;  // number of the newest one
  FreedMemory freedMemory_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
