#include "Screens/TranslateScreenController.h"

#include <chrono>
#include <utility>

#include "Screens/CardFrames.h"
#include "Screens/Prompts.h"
#include "Screens/ScreenFolder.h"
#include "Screens/TranslateMessages.h"

namespace zephyx {
namespace {

// From the host.
constexpr auto showMethod = "translateShow";
constexpr auto panelShownMethod = "translatePanelShown";
constexpr auto restoreLastMethod = "translateRestoreLast";
constexpr auto focusPanelMethod = "translateFocusPanel";
constexpr auto tokenMethod = "translateToken";
constexpr auto doneMethod = "translateDone";
constexpr auto errorMethod = "translateError";
constexpr auto dismissMethod = "translateDismiss";
// To the host.
constexpr auto requestMethod = "translateRequest";
constexpr auto cancelMethod = "translateCancel";
constexpr auto panelReadyMethod = "translatePanelReady";
constexpr auto updateCardFramesMethod = "translateUpdateCardFrames";
constexpr auto setPanelWideMethod = "translateSetPanelWide";
constexpr auto hidePanelMethod = "translateHidePanel";
constexpr auto pasteMethod = "translatePaste";
constexpr auto acceptToEditorMethod = "translateAcceptToEditor";
constexpr auto checkAccessibilityMethod = "translateCheckAccessibility";

constexpr auto notTrusted = "notTrusted";
constexpr auto translateMode = "translate";
constexpr auto improveMode = "improve";
// One picture's time: pieces that come faster are shown together.
constexpr auto pendingDelay = std::chrono::milliseconds(15);

}  // namespace

TranslateScreenController::TranslateScreenController(ScreenServices services)
    : settings_(services.userDefaults),
      writeClipboardText_(services.writeClipboardText),
      pasteShortcut_(services.readClipboardText, longestSourceText,
                     [this] { setMessage(tr("The clipboard holds more than fits in here.")); }),
      channel_(services.messenger, screenChannelName, reportToLog),
      updates_(channel_) {
  pendingTimer_.setSingleShot(true);
  pendingTimer_.setInterval(pendingDelay);
  connect(&pendingTimer_, &QTimer::timeout, this, &TranslateScreenController::flushPending);
  channel_.setMethodCallHandler(
      [this](const MethodCall& call, MethodResult result) { handle(call, std::move(result)); });
}

TranslateScreenController::~TranslateScreenController() {
  channel_.setMethodCallHandler({});
}

void TranslateScreenController::handle(const MethodCall& call, MethodResult result) {
  static const Map none;
  const Map* given = call.arguments.asMap();
  const Map& map = given ? *given : none;
  if (call.method == tokenMethod) {
    takeToken(map);
  } else if (call.method == showMethod) {
    show(map);
  } else if (call.method == panelShownMethod) {
    panelShown();
  } else if (call.method == restoreLastMethod) {
    restoreLast(map);
  } else if (call.method == focusPanelMethod) {
    emit focusWanted();
  } else if (call.method == doneMethod) {
    if (isCurrent(map)) endGeneration(TranslatePhase::done);
  } else if (call.method == errorMethod) {
    takeError(map);
  } else if (call.method == dismissMethod) {
    dismiss();
  } else if (!updates_.handle(call)) {
    return result.notImplemented();
  }
  result.success();
}

void TranslateScreenController::panelShown() {
  visible_ = true;
  pasting_ = false;
  setMessage({});
  // The host hid its background with the panel.
  if (!cards_.isNull()) channel_.invokeMethod(updateCardFramesMethod, cards_);
  checkPermission();
  if (!std::exchange(restoring_, false)) beginSession({});
  emit focusWanted();
}

void TranslateScreenController::show(const Map& message) {
  if (!visible_) return;
  TranslateSession session;
  session.text = textArgument(message, "text");
  if (const QString mode = textArgument(message, "mode"); !mode.isEmpty()) session.mode = mode;
  if (const QString source = textArgument(message, "source"); !source.isEmpty())
    session.source = source;
  const bool tooLong = session.text.size() > longestSourceText;
  if (tooLong) {
    session.text.truncate(longestSourceText);
    session.phase = TranslatePhase::failed;
    session.errorCode = QStringLiteral("too_long");
    session.errorMessage = tr("The text is too long. Select less of it, or shorten it here.");
  } else if (session.text.trimmed().isEmpty()) {
    session.phase = TranslatePhase::empty;
  }
  const bool runs = session.phase == TranslatePhase::waiting;
  beginSession(std::move(session));
  if (runs) run();
  emit sessionBegan();
}

void TranslateScreenController::restoreLast(const Map& message) {
  restoring_ = true;
  visible_ = true;
  stop();
  TranslateSession session;
  if (!session_.requestedText.isEmpty())
    session = session_;
  else if (last_)
    session = *last_;
  else
    session.phase = TranslatePhase::empty;
  if (const QString origin = textArgument(message, "origin"); !origin.isEmpty())
    session.source = origin;
  beginSession(std::move(session));
  emit sessionBegan();
}

void TranslateScreenController::beginSession(TranslateSession session) {
  stop();
  if (!session_.requestedText.isEmpty()) last_ = session_;
  session_ = std::move(session);
  emit textChanged();
  emit choicesChanged();
  emit sessionChanged();
  emit resultReset();
}

void TranslateScreenController::setText(const QString& text) {
  if (text == session_.text) return;
  session_.text = text;
  emit textChanged();
  emit sessionChanged();
}

void TranslateScreenController::run() {
  stop();
  const QString text = session_.text;
  if (text.trimmed().isEmpty()) return;
  pendingTimer_.stop();
  pending_.clear();
  session_.result.clear();
  session_.requestedText = text;
  session_.errorCode.clear();
  session_.errorMessage.clear();
  session_.phase = TranslatePhase::generating;
  setMessage({});
  emit resultReset();
  emit sessionChanged();
  channel_.invokeMethod(requestMethod,
                        Map{{"text", text.toStdString()},
                            {"direction", settings_.translateDirection().toStdString()},
                            {"mode", session_.mode.toStdString()},
                            {"tone", settings_.improveTone().toStdString()},
                            {"gen", ++gen_}});
}

void TranslateScreenController::stop() {
  if (session_.phase != TranslatePhase::generating) return;
  endGeneration(TranslatePhase::stopped);
  channel_.invokeMethod(cancelMethod);
}

bool TranslateScreenController::isCurrent(const Map& message) const {
  const Value* gen = message.find("gen");
  return session_.phase == TranslatePhase::generating && gen && gen->asInteger() == gen_;
}

void TranslateScreenController::takeToken(const Map& message) {
  if (!isCurrent(message)) return;
  const bool isFirst = !hasResult();
  const QString piece = textArgument(message, "token");
  session_.result += piece;
  pending_ += piece;
  if (isFirst) {
    flushPending();
    emit sessionChanged();
  } else if (!pendingTimer_.isActive()) {
    pendingTimer_.start();
  }
}

void TranslateScreenController::flushPending() {
  pendingTimer_.stop();
  if (!pending_.isEmpty()) emit resultAppended(std::exchange(pending_, {}));
}

void TranslateScreenController::takeError(const Map& message) {
  if (!isCurrent(message)) return;
  session_.errorCode = textArgument(message, "code");
  session_.errorMessage = textArgument(message, "message");
  endGeneration(TranslatePhase::failed);
}

void TranslateScreenController::endGeneration(TranslatePhase phase) {
  flushPending();
  session_.phase = phase;
  emit sessionChanged();
}

QVariantList TranslateScreenController::choices() const {
  if (session_.mode == translateMode) return directionChoices();
  return session_.mode == improveMode ? toneChoices() : QVariantList();
}

QString TranslateScreenController::choice() const {
  return session_.mode == improveMode ? settings_.improveTone() : settings_.translateDirection();
}

void TranslateScreenController::setChoice(const QString& id) {
  if (choices().isEmpty() || id == choice()) return;
  if (session_.mode == improveMode)
    settings_.setImproveTone(id);
  else
    settings_.setTranslateDirection(id);
  emit choicesChanged();
  run();
}

void TranslateScreenController::paste() {
  if (session_.phase == TranslatePhase::generating || !hasResult() || pasting_) return;
  pasting_ = true;
  setMessage({});
  if (writeClipboardText_) writeClipboardText_(session_.replacement().toStdString());
  channel_.invokeMethod(pasteMethod, {}, guard_.wrap([this](const MethodReply& reply) {
    pasting_ = false;
    const auto* value = std::get_if<Value>(&reply);
    const auto* end = value ? value->asString() : nullptr;
    if (end && *end == notTrusted)
      setMayPaste(false);
    else if (!value)
      setMessage(tr("The result is on the clipboard but could not be pasted."));
  }));
}

void TranslateScreenController::acceptToEditor() {
  if (session_.phase == TranslatePhase::generating || !hasResult()) return;
  channel_.invokeMethod(acceptToEditorMethod, Map{{"text", session_.replacement().toStdString()}});
  channel_.invokeMethod(hidePanelMethod);
}

void TranslateScreenController::copy(const QString& selection) {
  const QString text = selection.isEmpty() ? session_.result.trimmed() : selection;
  if (text.isEmpty() || !writeClipboardText_) return;
  writeClipboardText_(text.toStdString());
  setMessage(tr("Copied."));
}

void TranslateScreenController::dismiss() {
  stop();
  channel_.invokeMethod(hidePanelMethod);
}

void TranslateScreenController::setVisible(bool visible) {
  visible_ = visible;
  // A key that comes before the host's word at the next showing must not act on this session.
  if (!visible) beginSession({});
}

void TranslateScreenController::setWide(bool wide) {
  settings_.setTranslateWide(wide);
  channel_.invokeMethod(setPanelWideMethod, Map{{"wide", wide}});
}

void TranslateScreenController::reportReady() {
  channel_.invokeMethod(panelReadyMethod);
}

void TranslateScreenController::checkPermission() {
  channel_.invokeMethod(checkAccessibilityMethod, {}, guard_.wrap([this](const MethodReply& reply) {
    if (const auto* value = std::get_if<Value>(&reply)) setMayPaste(value->asBool().value_or(true));
  }));
}

void TranslateScreenController::reportCards(const QVariantList& rectangles, qreal cornerRadius) {
  Value cards = cardFrames(rectangles, cornerRadius);
  if (cards == cards_) return;
  cards_ = std::move(cards);
  channel_.invokeMethod(updateCardFramesMethod, cards_);
}

void TranslateScreenController::setMayPaste(bool mayPaste) {
  if (std::exchange(mayPaste_, mayPaste) != mayPaste) emit mayPasteChanged();
}

void TranslateScreenController::setMessage(const QString& message) {
  if (std::exchange(message_, message) != message) emit messageChanged();
}

}  // namespace zephyx
