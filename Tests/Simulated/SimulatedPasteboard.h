#pragma once

#include <map>
#include <set>

#include "Platform/Pasteboard.h"

namespace zephyx {

class SimulatedDispatch;
class SimulatedFaults;

/// What a program put on the pasteboard, and how it answers when asked for it.
struct SimulatedPasteboardOwner {
  std::vector<std::pair<std::string, Bytes>> items;
  std::set<std::string> refused;  ///< offered, but not handed over
  double answerTime = 0;          ///< seconds until an answer
  bool isGone = false;            ///< quit, its contents with it
  std::shared_ptr<RunningApplication> source;
};

/// The pasteboard of a system that does or does not announce changes. One that does shows a change
/// once it has fetched what the observer plans to read; later reads of other types ask the owner,
/// if it still owns the pasteboard. One that does not shows each change at once, and every contents
/// object reads whatever is there when it is asked.
class SimulatedPasteboard final : public Pasteboard {
 public:
  using Owner = SimulatedPasteboardOwner;

  /// How long the system waits for an owner, and how much data it takes.
  static constexpr double readDeadline = 2;
  static constexpr std::size_t readLimit = 64 * 1024 * 1024;

  SimulatedPasteboard(SimulatedDispatch& dispatch, SimulatedFaults& faults);
  ~SimulatedPasteboard() override;

  std::int64_t changeCount() const override;
  std::shared_ptr<PasteboardContents> contents() const override;
  Registration observeChanges(PasteboardReadPlan plan, std::function<void()> handler) override;
  std::int64_t clearContents() override;
  bool writeString(const std::string& text) override;
  bool writeUrl(const std::string& url) override;
  bool writeImage(const Image& image) override;
  void copyItems(std::function<void(std::shared_ptr<const PasteboardItems>)> done) const override;
  bool writeItems(const PasteboardItems& items) override;

  /// From before the host starts.
  void setAnnouncesChanges(bool announces);
  bool announcesChanges() const;
  /// Another program takes the pasteboard over.
  std::shared_ptr<Owner> otherProgramCopies(Owner owner);
  std::shared_ptr<Owner> otherProgramCopiesString(const std::string& text);
  /// What another program gets now.
  std::optional<Bytes> otherProgramPastes(const std::string& type) const;
  std::vector<std::string> offeredTypes() const;
  /// A program that is asked for the text; "" when there is none.
  std::string pastedString() const;

 private:
  struct State;
  class Contents;
  class Items;

  void announce(std::shared_ptr<Owner> owner);
  void write(const char* type, BytesView data);

  std::shared_ptr<State> state_;
};

}  // namespace zephyx
