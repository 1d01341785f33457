#include "Screens/ClipboardScreenController.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <span>
#include <utility>

#include "Platform/PrivateFile.h"
#include "Screens/Age.h"
#include "Screens/CardFrames.h"
#include "Screens/ScreenFolder.h"

namespace zephyx {
namespace {

// From the host.
constexpr auto entryCapturedMethod = "clipboardEntryCaptured";
constexpr auto panelShownMethod = "clipboardPanelShown";
// To the host.
constexpr auto hidePanelMethod = "clipboardHidePanel";
constexpr auto updateCardFramesMethod = "clipboardUpdateCardFrames";
constexpr auto startWindowDragMethod = "clipboardStartWindowDrag";
constexpr auto setPasteboardMethod = "clipboardSetPasteboard";
constexpr auto pasteMethod = "clipboardPaste";
constexpr auto checkAccessibilityMethod = "clipboardCheckAccessibility";
constexpr auto showInFinderMethod = "clipboardShowInFinder";
constexpr auto quickLookMethod = "clipboardQuickLook";
constexpr auto openUrlMethod = "clipboardOpenUrl";

constexpr auto notTrusted = "notTrusted";
constexpr auto pinnedFilter = "pinned";
constexpr int pageRows = 60;
constexpr qsizetype longestSearch = 10'000;
constexpr std::size_t previewBytes = 1'000'000;

constexpr auto gone = "This entry is no longer in the history.";

/// Where a text entry lies while it is previewed.
std::string previewFolder(const std::string& folder) {
  return folder + "/clipboard_preview";
}

std::string previewFile(const std::string& folder) {
  return previewFolder(folder) + "/Clipboard text.txt";
}

const std::string* replyText(const MethodReply& reply) {
  const auto* value = std::get_if<Value>(&reply);
  return value ? value->asString() : nullptr;
}

bool succeeded(const MethodReply& reply) {
  return std::holds_alternative<Value>(reply);
}

}  // namespace

ClipboardScreenController::ClipboardScreenController(ScreenServices services)
    : settings_(services.userDefaults),
      folder_(screenFolder(services.directories)),
      generation_(std::make_shared<std::atomic<std::uint64_t>>(0)),
      pasteShortcut_(
          services.readClipboardText, longestSearch,
          [this] { setMessage(tr("The clipboard holds more than one can search for.")); }),
      channel_(services.messenger, screenChannelName, reportToLog),
      updates_(channel_) {
  connect(&model_, &ClipboardModel::moreWanted, this, &ClipboardScreenController::loadMore);
  queue_.run(
      [this] {
        store_ = std::make_unique<ClipboardStore>(folder_);
        return store_->condition();
      },
      guard_.wrap([this](StoreCondition condition) { warnAbout(condition); }));
  loadFirstPage();
  queue_.run([this] { store().sweepImages(); });
  removePreview();
  channel_.setMethodCallHandler(
      [this](MethodCall call, MethodResult result) { handle(std::move(call), std::move(result)); });
}

ClipboardScreenController::~ClipboardScreenController() {
  channel_.setMethodCallHandler({});
  removePreview();
}

ClipboardStore& ClipboardScreenController::store() {
  return *store_;
}

void ClipboardScreenController::handle(MethodCall call, MethodResult result) {
  if (call.method == entryCapturedMethod) {
    entryCaptured(std::move(call.arguments), std::move(result));
  } else if (call.method == panelShownMethod) {
    showPanel();
    result.success();
  } else if (updates_.handle(call)) {
    result.success();
  } else {
    result.notImplemented();
  }
}

void ClipboardScreenController::entryCaptured(Value message, MethodResult result) {
  auto captured = CapturedEntry::fromMessage(std::move(message));
  if (!captured) return result.success();
  queue_.run(
      [this, captured = std::move(*captured), limit = settings_.historyLimit()]() mutable {
        auto inserted = store().insert(captured, limit);
        captured = {};
        return inserted;
      },
      guard_.wrap([this, result = std::move(result)](auto inserted) mutable {
        if (!inserted) {
          setNotice(tr(
              "What was copied could not be kept: the disk may be full, or the history in use."));
          return result.error("store", "the entry was not written");
        }
        for (const auto id : inserted->dropped) model_.remove(id);
        model_.setNow(nowEpochMs());
        // Rows that are still on their way were read after this insertion and hold it.
        if (!isLoading()) {
          if (query_ == ClipboardQuery{})
            model_.prepend(std::move(inserted->entry));
          else
            loadFirstPage();
        }
        result.success();
      }));
}

void ClipboardScreenController::begin() {
  pasting_ = false;
  whenLoaded_ = nullptr;
  removePreview();
}

void ClipboardScreenController::showPanel() {
  setMessage(std::exchange(notice_, {}));
  model_.setNow(nowEpochMs());
  // The host hid its backgrounds with the panel.
  if (!cards_.isNull()) channel_.invokeMethod(updateCardFramesMethod, cards_);
  channel_.invokeMethod(checkAccessibilityMethod, {}, guard_.wrap([this](const MethodReply& reply) {
    if (const auto* value = std::get_if<Value>(&reply)) setMayPaste(value->asBool().value_or(true));
  }));
  emit panelShown();
}

void ClipboardScreenController::setSearchText(const QString& text) {
  auto query = query_;
  query.text = text.toStdString();
  setQuery(std::move(query));
}

QString ClipboardScreenController::filter() const {
  return query_.pinnedOnly ? QString(pinnedFilter) : QString::fromStdString(query_.kind);
}

void ClipboardScreenController::setFilter(const QString& filter) {
  auto query = query_;
  query.pinnedOnly = filter == pinnedFilter;
  query.kind = query.pinnedOnly ? std::string() : filter.toStdString();
  setQuery(std::move(query));
}

void ClipboardScreenController::setQuery(ClipboardQuery query) {
  if (query == query_) return;
  query_ = std::move(query);
  loadFirstPage();
  emit queryChanged();
}

void ClipboardScreenController::loadFirstPage() {
  const auto generation = ++*generation_;
  ++loads_;
  queue_.run(
      [this, query = query_, generation, newest = generation_] {
        std::vector<ClipboardEntry> entries;
        // Typing outruns searching: only the last query is worth the work.
        if (*newest == generation) entries = store().page(query, ClipboardStore::newest, pageRows);
        return entries;
      },
      guard_.wrap([this, generation](std::vector<ClipboardEntry> entries) {
        --loads_;
        if (*generation_ != generation) return;
        const bool complete = entries.size() < pageRows;
        model_.setNow(nowEpochMs());
        model_.replace(std::move(entries), complete);
        if (auto action = std::exchange(whenLoaded_, nullptr)) action();
      }));
}

void ClipboardScreenController::loadMore(std::int64_t before) {
  const std::uint64_t generation = *generation_;
  queue_.run([this, query = query_, before] { return store().page(query, before, pageRows); },
             guard_.wrap([this, generation](std::vector<ClipboardEntry> entries) {
               if (*generation_ != generation) return;
               const bool complete = entries.size() < pageRows;
               model_.append(std::move(entries), complete);
             }));
}

// A key that follows the last letter of a search is meant for what the search finds.
void ClipboardScreenController::whenLoaded(std::function<void()> action) {
  if (isLoading())
    whenLoaded_ = std::move(action);
  else
    action();
}

void ClipboardScreenController::withText(const ClipboardEntry& entry,
                                         std::function<void(std::string)> use) {
  if (entry.isWhole()) return use(entry.preview);
  queue_.run([this, id = entry.id] { return store().text(id); },
             guard_.wrap([this, use = std::move(use)](std::optional<std::string> text) {
               if (text) return use(std::move(*text));
               pasting_ = false;
               setMessage(tr(gone));
             }));
}

void ClipboardScreenController::paste(int row, bool plainText) {
  if (isLoading()) return whenLoaded([this, plainText] { paste(0, plainText); });
  const ClipboardEntry* entry = model_.entry(row);
  if (!entry || pasting_) return;
  pasting_ = true;
  setMessage({});
  withText(*entry, [this, entry = *entry, plainText](std::string text) {
    writeToClipboard(entry, std::move(text), plainText);
  });
}

void ClipboardScreenController::writeToClipboard(const ClipboardEntry& entry, std::string text,
                                                 bool plainText) {
  std::string kind = entry.kind;
  if (plainText && kind == "file" && entry.filePath) {
    kind = "text";
    text = *entry.filePath;
  }
  Map arguments{{"type", kind}, {"plainText", plainText}};
  if (!text.empty()) arguments.append("text", std::move(text));
  if (entry.filePath) arguments.append("filePath", *entry.filePath);
  if (entry.imageBlobPath) arguments.append("imageBlobPath", *entry.imageBlobPath);
  channel_.invokeMethod(setPasteboardMethod, std::move(arguments),
                        guard_.wrap([this](const MethodReply& reply) {
                          if (succeeded(reply)) return pasteWritten();
                          pasting_ = false;
                          setMessage(tr("This entry could not be put on the clipboard."));
                        }));
}

void ClipboardScreenController::pasteWritten() {
  channel_.invokeMethod(pasteMethod, Map{}, guard_.wrap([this](const MethodReply& reply) {
    pasting_ = false;
    const std::string* end = replyText(reply);
    if (end && *end == notTrusted)
      setMayPaste(false);
    else if (!succeeded(reply))
      setMessage(tr("This entry is on the clipboard but could not be pasted."));
  }));
}

void ClipboardScreenController::preview(int row) {
  if (isLoading()) return whenLoaded([this] { preview(0); });
  const ClipboardEntry* entry = model_.entry(row);
  if (!entry) return;
  const auto& path = entry->filePath ? entry->filePath : entry->imageBlobPath;
  if (!path) return previewText(*entry);
  if (QFileInfo::exists(QString::fromStdString(*path))) {
    channel_.invokeMethod(quickLookMethod, *path);
  } else {
    setMessage(tr("The file is no longer where it was."));
  }
}

void ClipboardScreenController::previewText(const ClipboardEntry& entry) {
  queue_.run(
      [this, id = entry.id] {
        const auto text = store().beginningOfText(id, previewBytes);
        if (!text || !makePrivateFolder(previewFolder(folder_))) return false;
        const std::span<const char> characters(*text);
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(characters.data());
        return writePrivateFile(previewFile(folder_), {bytes, characters.size()});
      },
      guard_.wrap([this](bool written) {
        if (written)
          channel_.invokeMethod(quickLookMethod, previewFile(folder_));
        else
          setMessage(tr("The preview could not be made."));
      }));
}

void ClipboardScreenController::removePreview() {
  QFile::remove(QString::fromStdString(previewFile(folder_)));
}

void ClipboardScreenController::openLink(int row) {
  const ClipboardEntry* entry = model_.entry(row);
  if (!entry || entry->kind != "url") return;
  withText(*entry,
           [this](std::string url) { channel_.invokeMethod(openUrlMethod, std::move(url)); });
}

void ClipboardScreenController::showInFileManager(int row) {
  const ClipboardEntry* entry = model_.entry(row);
  if (entry && entry->filePath) channel_.invokeMethod(showInFinderMethod, *entry->filePath);
}

void ClipboardScreenController::togglePinned(int row) {
  const ClipboardEntry* entry = model_.entry(row);
  if (!entry) return;
  queue_.run(
      [this, id = entry->id, pinned = !entry->pinned] { return store().setPinned(id, pinned); },
      guard_.wrap([this, id = entry->id, pinned = !entry->pinned](bool done) {
        if (!done) return setMessage(tr(gone));
        model_.setPinned(id, pinned);
        if (query_.pinnedOnly && !pinned) model_.remove(id);
      }));
}

void ClipboardScreenController::remove(int row) {
  const ClipboardEntry* entry = model_.entry(row);
  if (!entry) return;
  queue_.run([this, id = entry->id] { return store().remove(id); },
             guard_.wrap([this, id = entry->id](bool done) {
               if (!done) return setMessage(tr("The entry could not be removed."));
               model_.remove(id);
             }));
}

void ClipboardScreenController::clearHistory() {
  queue_.run([this] { return store().clear(); }, guard_.wrap([this](bool done) {
    if (!done) setMessage(tr("The history could not be cleared."));
    loadFirstPage();
  }));
}

void ClipboardScreenController::hidePanel() {
  channel_.invokeMethod(hidePanelMethod);
}

void ClipboardScreenController::startWindowDrag() {
  channel_.invokeMethod(startWindowDragMethod);
}

void ClipboardScreenController::reportCards(const QVariantList& rectangles, qreal cornerRadius) {
  Value cards = cardFrames(rectangles, cornerRadius);
  if (cards == cards_) return;
  cards_ = std::move(cards);
  channel_.invokeMethod(updateCardFramesMethod, cards_);
}

void ClipboardScreenController::setMayPaste(bool mayPaste) {
  if (std::exchange(mayPaste_, mayPaste) != mayPaste) emit mayPasteChanged();
}

// Copies are recorded while the panel is hidden: its next appearance says it as well.
void ClipboardScreenController::setNotice(const QString& notice) {
  notice_ = notice;
  setMessage(notice);
}

void ClipboardScreenController::setMessage(const QString& message) {
  if (std::exchange(message_, message) != message) emit messageChanged();
}

void ClipboardScreenController::warnAbout(StoreCondition condition) {
  switch (condition) {
    case StoreCondition::opened:
    case StoreCondition::created:
      break;
    case StoreCondition::replacedDamaged:
      setNotice(tr("The history was damaged. It was set aside and a new one begun."));
      break;
    case StoreCondition::replacedNewer:
      setNotice(tr("The history is of a newer version. It was set aside and a new one begun."));
      break;
    case StoreCondition::notKept:
      setNotice(tr("The history cannot be written here and lasts only until the program ends."));
      break;
  }
}

}  // namespace zephyx
