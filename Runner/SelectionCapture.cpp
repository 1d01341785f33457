#include "Runner/SelectionCapture.h"

#include <utility>

#include "Platform/Accessibility.h"
#include "Platform/Dispatch.h"
#include "Platform/Events.h"
#include "Platform/Pasteboard.h"
#include "Platform/Platform.h"
#include "Platform/SystemLog.h"
#include "Runner/ClipboardMonitor.h"
#include "Runner/SharedObjects.h"

namespace zephyx {
namespace {

constexpr double pollInterval = 0.04;
constexpr double patience = 0.4;
// A program that goes on copying while its last copy is being saved.
constexpr int mostSaves = 3;

}  // namespace

void SelectionCapture::capture(Completion completion) {
  SharedObjects::current().get<SelectionCapture>().begin(std::move(completion));
}

SelectionCapture::SelectionCapture(Platform& platform)
    : accessibility_(platform.accessibility()),
      mainQueue_(platform.dispatch().mainQueue()),
      globalQueue_(platform.dispatch().globalQueue()),
      eventPoster_(platform.eventPoster()),
      pasteboard_(platform.pasteboard()),
      log_(platform.systemLog()) {
  ClipboardMonitor::shared().onChangeWhileSuspended = lifetime_.wrap([this] { lookForChanges(); });
}

void SelectionCapture::begin(Completion completion) {
  if (!accessibility_.isProcessTrusted()) {
    log_.log(
        "[Translate] SelectionCapture: sin permiso de Accesibilidad — solicitando y cayendo a "
        "portapapeles actual");
    accessibility_.isProcessTrustedWithPrompt();
    readString(std::move(completion));
    return;
  }
  auto session = std::make_shared<Session>();
  session->completion = std::move(completion);
  save(session, 1);
}

// The monitor goes on meanwhile: nothing has been typed yet, so every change is the user's.
void SelectionCapture::save(const SessionPointer& session, int attempt) {
  const auto before = pasteboard_.changeCount();
  pasteboard_.copyItems(lifetime_.wrap(
      [this, session, before, attempt](std::shared_ptr<const PasteboardItems> items) {
        if (pasteboard_.changeCount() != before && attempt < mostSaves) {
          save(session, attempt + 1);
          return;
        }
        session->savedItems = std::move(items);
        typeCopyChord(session);
      }));
}

void SelectionCapture::typeCopyChord(const SessionPointer& session) {
  running_.push_back(session);
  ClipboardMonitor::shared().isSuspended = true;
  session->baseline = pasteboard_.changeCount();
  eventPoster_.postKey(keyCode::c, eventModifier::command);
  if (pasteboard_.changeCount() != session->baseline) {
    finishWithChange(session);
  } else {
    pollLater(session, 0);
  }
}

void SelectionCapture::pollLater(SessionPointer session, double elapsed) {
  mainQueue_.asyncAfter(pollInterval, lifetime_.wrap([this, session = std::move(session), elapsed] {
    pollForChange(session, elapsed);
  }));
}

void SelectionCapture::pollForChange(const SessionPointer& session, double elapsed) {
  if (session->isOver) return;
  if (pasteboard_.changeCount() != session->baseline) {
    finishWithChange(session);
  } else if (elapsed + pollInterval < patience) {
    pollLater(session, elapsed + pollInterval);
  } else {
    timeOut(session);
  }
}

// At once, where the system announces changes: the next look may be 40 ms away.
void SelectionCapture::lookForChanges() {
  for (const auto& session : std::vector(running_)) {
    if (!session->isOver && pasteboard_.changeCount() != session->baseline) {
      finishWithChange(session);
    }
  }
}

void SelectionCapture::finishWithChange(const SessionPointer& session) {
  session->isOver = true;
  readString([this, session](std::optional<std::string> text) {
    pasteboard_.clearContents();
    if (!session->savedItems->isEmpty()) pasteboard_.writeItems(*session->savedItems);
    resumeMonitor(session);
    session->completion(std::move(text));
  });
}

// What is there is the user's, and nothing has to be put back.
void SelectionCapture::timeOut(const SessionPointer& session) {
  session->isOver = true;
  resumeMonitor(session);
  readString(std::move(session->completion));
}

void SelectionCapture::readString(Completion use) {
  auto answer = lifetime_.wrap(
      [use = std::move(use)](std::optional<std::string> text) { use(std::move(text)); });
  globalQueue_.async([contents = pasteboard_.contents(), &mainQueue = mainQueue_,
                      answer = std::move(answer)]() mutable {
    mainQueue.async([text = contents->string(pasteboardType::string),
                     answer = std::move(answer)]() mutable { answer(std::move(text)); });
  });
}

// A second capture may have begun meanwhile, whose copy is not an entry either.
void SelectionCapture::resumeMonitor(const SessionPointer& session) {
  auto& monitor = ClipboardMonitor::shared();
  monitor.lastChangeCount = pasteboard_.changeCount();
  std::erase(running_, session);
  monitor.isSuspended = !running_.empty();
}

}  // namespace zephyx
