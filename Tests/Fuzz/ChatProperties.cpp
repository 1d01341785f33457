#include <QtCore/QCoreApplication>
#include <algorithm>
#include <array>

#include "Screens/ChatStream.h"
#include "Screens/TextCleaning.h"
#include "Tests/Fuzz/CannedNetwork.h"
#include "Tests/Fuzz/FuzzTargets.h"

namespace zephyx {
namespace {

struct Outcome {
  QString text;
  QString code;
  QString message;
  int ends = 0;
  bool isClean = true;
  bool isSilentAfterwards = true;
  bool operator==(const Outcome&) const = default;
};

constexpr auto key = "key-that-nobody-may-see";

Outcome answered(const QByteArray& body, int status, qsizetype piece) {
  static auto& network = *new CannedNetwork;  // never destroyed, as the application is not
  const ChatServer server{QUrl(QStringLiteral("http://127.0.0.1/v1/chat/completions")), {}, key};
  Outcome outcome;
  {
    ChatStream stream(network, server, {}, {});
    QObject::connect(&stream, &ChatStream::token, &stream, [&](const QString& text) {
      outcome.isSilentAfterwards &= outcome.ends == 0;
      outcome.isClean &= !text.isEmpty() && text == withoutControls(text);
      outcome.text += text;
    });
    QObject::connect(&stream, &ChatStream::finished, &stream, [&] { ++outcome.ends; });
    QObject::connect(&stream, &ChatStream::failed, &stream,
                     [&](const QString& code, const QString& message) {
                       ++outcome.ends;
                       outcome.code = code;
                       outcome.message = message;
                     });
    network.answer(body, status, piece);
  }
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  return outcome;
}

}  // namespace

const char* brokenChatProperty(BytesView bytes) {
  if (bytes.size() < 2) return nullptr;
  static int count = 0;
  static const auto* const application = new QCoreApplication(count, nullptr);
  static_cast<void>(application);

  constexpr std::array statuses = {200, 200, 200, 200, 201, 302, 401, 500, 0};
  const int status = statuses[bytes[0] % statuses.size()];
  const QByteArray body(reinterpret_cast<const char*>(bytes.data()) + 2,
                        static_cast<qsizetype>(bytes.size()) - 2);
  const auto outcome = answered(body, status, std::max<qsizetype>(1, body.size()));
  if (outcome.ends != 1) return "an answer ends once";
  if (!outcome.isSilentAfterwards) return "no text comes after the end";
  if (!outcome.isClean) return "text has no control characters";
  if (outcome.text.size() > body.size()) return "text is no longer than the answer";
  if (outcome.code.isEmpty() != outcome.message.isEmpty()) return "a failure has words";
  if (outcome.message.size() > 500) return "a failure's words are bounded";
  if (!body.contains("key-that") && outcome.message.contains(QLatin1String("key-that"))) {
    return "no failure tells the key";
  }
  if (!(answered(body, status, 1 + bytes[1] % 32) == outcome)) {
    return "an answer is the same in whatever pieces it comes";
  }
  return nullptr;
}

}  // namespace zephyx
