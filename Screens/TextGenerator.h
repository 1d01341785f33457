#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtNetwork/QNetworkAccessManager>
#include <cstdint>

#include "Channel/MethodChannel.h"
#include "Platform/LifetimeGuard.h"
#include "Screens/ChatStream.h"
#include "Screens/ServerSettings.h"

namespace zephyx {

/// Writes the texts of the AI actions, one at a time: asks the server and sends each piece of its
/// answer on. Main thread; nothing here waits.
class TextGenerator : public QObject {
 public:
  /// Both outlive the generator.
  TextGenerator(ServerSettings& settings, MethodChannel& channel);
  ~TextGenerator() override;

  /// A newer generation ends the older one, which says nothing any more.
  void translate(const Value& arguments);
  void cancel();

  void setPatience(ChatPatience patience) { patience_ = patience; }

 private:
  struct Request {
    ChatMessages messages;
    std::int64_t gen;
  };

  void begin(const QUrl& endpoint, const Request& request);
  void start(const ChatServer& server, const Request& request);
  void fail(std::int64_t gen, const char* code, const QString& message);

  ServerSettings& settings_;
  MethodChannel& channel_;
  ChatPatience patience_;
  QNetworkAccessManager network_;
  QPointer<ChatStream> stream_;
  std::uint64_t current_ = 0;  ///< grows with each beginning and each end
  LifetimeGuard guard_;
};

}  // namespace zephyx
