#include "Screens/TextGenerator.h"

#include <QtNetwork/QNetworkProxy>
#include <utility>

#include "Screens/Prompts.h"
#include "Screens/TranslateMessages.h"

namespace zephyx {
namespace {

// To the host.
constexpr auto headlessTokenMethod = "headlessTranslateToken";
constexpr auto headlessDoneMethod = "headlessTranslateDone";
constexpr auto headlessErrorMethod = "headlessTranslateError";

}  // namespace

TextGenerator::TextGenerator(ServerSettings& settings, MethodChannel& channel)
    : settings_(settings), channel_(channel) {
  network_.setProxy(QNetworkProxy::NoProxy);
}

// The network takes its replies with it, so the request ends first.
TextGenerator::~TextGenerator() {
  delete stream_;
}

void TextGenerator::translate(const Value& arguments) {
  const Map* map = arguments.asMap();
  const Value* number = map ? map->find("gen") : nullptr;
  const auto gen = number ? number->asInteger() : std::nullopt;
  if (!gen) return;
  cancel();
  const QString text = textArgument(*map, "text");
  if (text.trimmed().isEmpty()) return fail(*gen, "empty", tr("There is no text to work on."));
  if (text.size() > longestSourceText)
    return fail(*gen, "too_long",
                tr("The text is too long: %1 characters at most.").arg(longestSourceText));
  const auto endpoint = settings_.endpoint();
  if (!endpoint) return fail(*gen, "not_configured", tr("No AI server is set up yet."));
  if (const auto* problem = std::get_if<QString>(&*endpoint))
    return fail(*gen, "not_configured", *problem);
  begin(std::get<QUrl>(*endpoint),
        {.messages = {.system = prompt(textArgument(*map, "mode"), textArgument(*map, "direction"),
                                       textArgument(*map, "tone")),
                      .user = text},
         .gen = *gen});
}

void TextGenerator::begin(const QUrl& endpoint, const Request& request) {
  settings_.withServer(
      endpoint,
      guard_.wrap([this, request, number = current_](const std::optional<ChatServer>& server) {
        if (number != current_) return;
        if (server) return start(*server, request);
        fail(request.gen, "key_unavailable",
             tr("The secret store did not give out the server's key. Unlock it, or enter the key "
                "again in the settings."));
      }));
}

void TextGenerator::start(const ChatServer& server, const Request& request) {
  const std::int64_t gen = request.gen;
  stream_ = new ChatStream(network_, server, request.messages, patience_, this);
  connect(stream_, &ChatStream::token, this, [this, gen](const QString& text) {
    channel_.invokeMethod(headlessTokenMethod, Map{{"token", text.toStdString()}, {"gen", gen}});
  });
  connect(stream_, &ChatStream::finished, this, [this, gen] {
    cancel();
    channel_.invokeMethod(headlessDoneMethod, Map{{"gen", gen}});
  });
  connect(stream_, &ChatStream::failed, this,
          [this, gen](const QString& code, const QString& message) {
            cancel();
            fail(gen, code.toLatin1().constData(), message);
          });
}

void TextGenerator::cancel() {
  ++current_;
  if (!stream_) return;
  stream_->stop();
  stream_->deleteLater();
  stream_ = nullptr;
}

void TextGenerator::fail(std::int64_t gen, const char* code, const QString& message) {
  channel_.invokeMethod(headlessErrorMethod,
                        Map{{"message", message.toStdString()}, {"code", code}, {"gen", gen}});
}

}  // namespace zephyx
