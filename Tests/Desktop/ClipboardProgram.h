#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Platform/Linux/EventFd.h"
#include "Platform/Linux/X11.h"

namespace zephyx {

/// Another program that copies, with good or bad manners. Like most programs it has one thread, in
/// which it copies as well as answers. Its methods may be called from any thread and return when it
/// has done what they say.
class ClipboardProgram {
 public:
  using Clock = std::chrono::steady_clock;
  /// Targets and their data, in the order in which they are offered.
  using Formats = std::vector<std::pair<std::string, std::string>>;

  struct Manners {
    bool answersTargets = true;
    bool answersData = true;
    bool holdsData = false;  ///< answers for data wait until `answerHeld`
    bool neverEnds = false;  ///< data come in pieces without an end
    std::size_t piece = 256u << 10;
    int targetsFormat = 32;
    std::map<std::string, std::string> types;  ///< by target; else the target's own name
    std::map<std::string, int> formats;        ///< bits per item, by target; else 8
  };

  ClipboardProgram();
  /// The connection closes, and its contents are gone.
  ~ClipboardProgram();
  ClipboardProgram(const ClipboardProgram&) = delete;
  ClipboardProgram& operator=(const ClipboardProgram&) = delete;

  void setManners(const Manners& manners);
  /// Returns the moment at which the server was told.
  Clock::time_point copy(Formats formats);
  Clock::time_point copyText(const std::string& text) { return copy({{"UTF8_STRING", text}}); }
  /// Copies one text after the other, in its own time.
  void copyTexts(std::vector<std::string> texts, std::chrono::microseconds interval);
  /// Answers what it has held back, with what it offers now.
  void answerHeld();
  void disown();
  /// Names of the targets it was asked for.
  std::vector<std::string> requests() const;

 private:
  struct Sending {
    std::size_t sent = 0;
    std::string data;
    xcb_atom_t type = XCB_NONE;
  };

  void run();
  void handleEvents();
  int copyNextText();
  void perform(std::function<void()> action);
  void take(Formats formats);
  void handle(const xcb_generic_event_t& event);
  void answer(const xcb_selection_request_event_t& request);
  bool provide(const xcb_selection_request_event_t& request);
  void notify(const xcb_selection_request_event_t& request, bool isProvided);
  void sendPiece(const xcb_property_notify_event_t& event);

  X11Connection connection_;
  xcb_window_t window_;
  xcb_atom_t clipboard_;
  EventFd wake_;
  // Of the program's own thread.
  Formats formats_;
  Manners manners_;
  std::vector<xcb_selection_request_event_t> held_;
  std::map<std::pair<xcb_window_t, xcb_atom_t>, Sending> sending_;
  std::vector<std::string> texts_;
  std::size_t nextText_ = 0;
  Clock::time_point nextCopy_;
  std::chrono::microseconds interval_{};

  mutable std::mutex mutex_;
  std::vector<std::function<void()>> actions_;
  std::vector<std::string> requests_;
  bool isQuitting_ = false;
  std::thread thread_;
};

}  // namespace zephyx
