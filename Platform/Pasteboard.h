#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/BinaryMessenger.h"
#include "Platform/Registration.h"

namespace zephyx {

class Image;
class RunningApplication;

namespace pasteboardType {
inline constexpr const char* fileUrl = "public.file-url";
inline constexpr const char* url = "public.url";
inline constexpr const char* string = "public.utf8-plain-text";
inline constexpr const char* png = "public.png";
inline constexpr const char* tiff = "public.tiff";
}  // namespace pasteboardType

/// What was on the pasteboard at one change count. Any thread but the main one: reading asks the
/// program that owns the contents and may take as long as the system lets it.
class PasteboardContents {
 public:
  virtual ~PasteboardContents() = default;

  /// In the owner's order; empty when the contents are gone or the owner does not answer in time.
  virtual std::vector<std::string> types() const = 0;
  /// Nothing when the type is not offered, is refused, is too large, or comes too late.
  virtual std::optional<Bytes> data(const std::string& type) const = 0;
  /// UTF-8, as `data`.
  virtual std::optional<std::string> string(const std::string& type) const = 0;
  /// The application that put the contents there, where the system knows it; else null.
  virtual std::shared_ptr<RunningApplication> source() const = 0;
};

/// What an observer is going to read, so that a system that announces changes can fetch it before
/// the owner moves on.
struct PasteboardReadPlan {
  std::vector<std::string> forbidden;  ///< when one of these types is offered, nothing is fetched
  std::vector<std::string>
      preferred;  ///< the first of these that is offered and answers is fetched
};

/// A copy of everything that was on the pasteboard, to be put back. Made and read by one platform;
/// immutable. Any thread.
class PasteboardItems {
 public:
  virtual ~PasteboardItems() = default;
  virtual bool isEmpty() const = 0;
};

/// The general pasteboard. Main thread. Looking at it never waits for another program; writing may
/// wait for a read under way where a system shares one pasteboard among the threads.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  /// Grows by one or more with each change of ownership, also with the host's own.
  virtual std::int64_t changeCount() const = 0;
  /// The contents at the current change count.
  virtual std::shared_ptr<PasteboardContents> contents() const = 0;

  /// Calls `handler` on the main thread for each change by another program, once, in order, when
  /// `changeCount` and `contents` show it. Returns an empty registration on a system that does not
  /// announce changes. One observer at a time.
  [[nodiscard]] virtual Registration observeChanges(PasteboardReadPlan plan,
                                                    std::function<void()> handler) = 0;

  /// Takes the pasteboard over, emptied. The writes that follow add to it and do not change the
  /// count. Returns the new change count.
  virtual std::int64_t clearContents() = 0;
  virtual bool writeString(const std::string& text) = 0;
  virtual bool writeUrl(const std::string& url) = 0;  ///< `file:` URLs become file references
  virtual bool writeImage(const Image& image) = 0;

  /// Copies every item with all its types, as far as the owner hands them over in time and within
  /// the platform's budget. `done` runs once, on the main thread, possibly inside the call.
  virtual void copyItems(
      std::function<void(std::shared_ptr<const PasteboardItems>)> done) const = 0;
  /// Adds what `copyItems` of this pasteboard made. False when that is nothing.
  virtual bool writeItems(const PasteboardItems& items) = 0;
};

}  // namespace zephyx
