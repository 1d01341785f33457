#include "Tests/Desktop/TargetProgram.h"

#include <atomic>
#include <stdexcept>

namespace zephyx {
namespace {

std::vector<std::string> command(TargetProgram::Kind kind, const std::string& file,
                                 const std::string& text) {
  switch (kind) {
    case TargetProgram::Kind::Gtk:
      return {"mousepad", "--disable-server", file};
    case TargetProgram::Kind::Qt:
      return {QT_TARGET_EXECUTABLE, file, text};
    case TargetProgram::Kind::Terminal:
      // Without line editing each character reaches the file at once.
      return {"xterm", "-e", "sh", "-c", "stty -icanon; exec cat >>\"$0\"", file};
  }
  return {};
}

}  // namespace

TargetProgram::TargetProgram(VirtualDesktop& desktop, Kind kind, const std::string& text)
    : TargetProgram(desktop, kind, text, {}) {}

TargetProgram::TargetProgram(VirtualDesktop& desktop, const std::string& text,
                             std::chrono::milliseconds copyDelay)
    : TargetProgram(desktop, Kind::Qt, text, {std::to_string(copyDelay.count())}) {}

TargetProgram::TargetProgram(VirtualDesktop& desktop, Kind kind, const std::string& text,
                             const std::vector<std::string>& moreArguments)
    : desktop_(desktop), kind_(kind), initialText_(text) {
  static std::atomic<int> counter{0};
  file_ = desktop.home() / ("target" + std::to_string(++counter) + ".txt");
  writeFile(file_, text);
  auto arguments = command(kind, file_.string(), text);
  arguments.insert(arguments.end(), moreArguments.begin(), moreArguments.end());
  process_ = desktop.start(arguments);
  window_ = desktop.windows().waitForManaged(name(kind), [&](const DesktopWindow& window) {
    return window.viewable && window.pid == process_.pid() &&
           desktop.windows().distinctColors(window) > 1;
  });
  if (!activate() || !waitFor([&] { return desktop.windows().focused() != 0; }))
    throw std::runtime_error(name(kind) + " does not come to the front");
}

std::string TargetProgram::name(Kind kind) {
  return kind == Kind::Gtk ? "Mousepad" : kind == Kind::Qt ? "qt_target" : "XTerm";
}

std::string TargetProgram::text() const {
  if (kind_ == Kind::Gtk && isActive() && isUnsaved()) {
    desktop_.input().chord({key::Control, key::S});
    (void)waitFor([&] { return !isUnsaved(); });
  }
  return readFile(file_);
}

bool TargetProgram::isUnsaved() const {
  return desktop_.windows().describe(window_.id).title.starts_with('*');
}

bool TargetProgram::hasChanged() const {
  return readFile(file_) != initialText_ || (kind_ == Kind::Gtk && isUnsaved());
}

bool TargetProgram::waitForText(const std::string& text) const {
  return waitFor([&] { return this->text() == text; });
}

void TargetProgram::copyAll() const {
  desktop_.input().chord({key::Control, key::A});
  desktop_.input().chord({key::Control, key::C});
}

}  // namespace zephyx
