#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QVariantList>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Channel/MethodChannel.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Linux/Engines/ScreenProgram.h"
#include "Screens/BackgroundQueue.h"
#include "Screens/ClipboardModel.h"
#include "Screens/ClipboardStore.h"
#include "Screens/PasteShortcut.h"
#include "Screens/ScreenSettings.h"
#include "Screens/UpdateNotice.h"

namespace zephyx {

/// The clipboard panel without its picture: keeps the history and speaks with the host. Works from
/// its construction on, whether or not there is a picture. Main thread; the store has its own.
class ClipboardScreenController : public QObject {
  Q_OBJECT
  QML_NAMED_ELEMENT(ClipboardController)
  QML_UNCREATABLE("made by the program")
  Q_PROPERTY(zephyx::UpdateNotice* updates READ updates CONSTANT)
  Q_PROPERTY(zephyx::ClipboardModel* entries READ entries CONSTANT)
  Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY queryChanged)
  Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY queryChanged)
  Q_PROPERTY(bool mayPaste READ mayPaste NOTIFY mayPasteChanged)
  Q_PROPERTY(QString message READ message WRITE setMessage NOTIFY messageChanged)

 public:
  explicit ClipboardScreenController(ScreenServices services);
  ~ClipboardScreenController() override;

  UpdateNotice* updates() { return &updates_; }
  ClipboardModel* entries() { return &model_; }
  QString searchText() const { return QString::fromStdString(query_.text); }
  void setSearchText(const QString& text);
  /// A kind, "pinned", or empty for all.
  QString filter() const;
  void setFilter(const QString& filter);
  bool mayPaste() const { return mayPaste_; }
  QString message() const { return message_; }
  void setNotice(const QString& notice);
  void setMessage(const QString& message);

  Q_INVOKABLE void paste(int row, bool plainText);
  Q_INVOKABLE void preview(int row);
  Q_INVOKABLE void openLink(int row);
  Q_INVOKABLE void showInFileManager(int row);
  Q_INVOKABLE void togglePinned(int row);
  Q_INVOKABLE void remove(int row);
  Q_INVOKABLE void clearHistory();
  /// Forgets what was under way; for a picture that goes, or begins anew.
  Q_INVOKABLE void begin();
  Q_INVOKABLE void hidePanel();
  Q_INVOKABLE void startWindowDrag();
  /// Rectangles in the picture's coordinates. Sent when they differ from the last ones.
  Q_INVOKABLE void reportCards(const QVariantList& rectangles, qreal cornerRadius);

 signals:
  void queryChanged();
  void mayPasteChanged();
  void messageChanged();
  /// The picture returns to its beginning: no search, first entry, keyboard focus.
  void panelShown();

 private:
  void handle(MethodCall call, MethodResult result);
  void entryCaptured(Value message, MethodResult result);
  void showPanel();
  void setQuery(ClipboardQuery query);
  void loadFirstPage();
  void loadMore(std::int64_t before);
  bool isLoading() const { return loads_ > 0; }
  void whenLoaded(std::function<void()> action);
  void withText(const ClipboardEntry& entry, std::function<void(std::string)> use);
  void writeToClipboard(const ClipboardEntry& entry, std::string text, bool plainText);
  void pasteWritten();
  void previewText(const ClipboardEntry& entry);
  void removePreview();
  void setMayPaste(bool mayPaste);
  void warnAbout(StoreCondition condition);
  ClipboardStore& store();

  ScreenSettings settings_;
  std::string folder_;
  ClipboardModel model_;
  ClipboardQuery query_;
  int loads_ = 0;
  std::function<void()> whenLoaded_;
  bool pasting_ = false;
  bool mayPaste_ = true;
  QString message_;
  QString notice_;  ///< a message that came while nobody may have looked
  Value cards_;
  std::shared_ptr<std::atomic<std::uint64_t>> generation_;
  std::unique_ptr<ClipboardStore> store_;  ///< touched by the queue's thread alone
  PasteShortcut pasteShortcut_;
  MethodChannel channel_;
  UpdateNotice updates_;
  BackgroundQueue queue_;  ///< ends before the store that its work uses
  LifetimeGuard guard_;
};

}  // namespace zephyx
