#include "Runner/TranslationRelay.h"

#include <utility>

#include "Runner/SharedObjects.h"

namespace zephyx {
namespace {

namespace panelMethod {
constexpr const char* show = "translateShow";
constexpr const char* token = "translateToken";
constexpr const char* done = "translateDone";
constexpr const char* error = "translateError";
constexpr const char* dismiss = "translateDismiss";
}  // namespace panelMethod

namespace mainMethod {
constexpr const char* translate = "headlessTranslate";
constexpr const char* cancel = "headlessTranslateCancel";
constexpr const char* acceptToEditor = "headlessAcceptToEditor";
}  // namespace mainMethod

}  // namespace

TranslationRelay& TranslationRelay::shared() {
  return SharedObjects::current().get<TranslationRelay>();
}

TranslationRelay::TranslationRelay(Platform&) {}

void TranslationRelay::tellPanel(std::string_view method, const Value& arguments) const {
  if (const auto channel = panelChannel.lock()) channel->invokeMethod(method, arguments);
}

void TranslationRelay::tellMainEngine(std::string_view method, const Value& arguments) const {
  if (const auto channel = notesChannel.lock()) channel->invokeMethod(method, arguments);
}

void TranslationRelay::showEditorText(const std::string& text, const std::string& mode) {
  tellPanel(panelMethod::show, Map{{"text", text}, {"mode", mode}, {"source", "editor"}});
}

void TranslationRelay::forwardToken(const std::string& token, std::int64_t gen) {
  tellPanel(panelMethod::token, Map{{"token", token}, {"gen", gen}});
}

void TranslationRelay::forwardToken(const Value& arguments) {
  tellPanel(panelMethod::token, arguments);
}

void TranslationRelay::forwardDone(std::int64_t gen) {
  tellPanel(panelMethod::done, Map{{"gen", gen}});
}

void TranslationRelay::forwardError(const std::string& message, std::int64_t gen,
                                    const std::string* code) {
  Map error{{"message", message}, {"gen", gen}};
  if (code) error.append("code", *code);
  tellPanel(panelMethod::error, std::move(error));
}

void TranslationRelay::dismissPanel() {
  tellPanel(panelMethod::dismiss);
}

void TranslationRelay::requestGeneration(Map request) {
  tellMainEngine(mainMethod::translate, std::move(request));
}

void TranslationRelay::cancelGeneration() {
  tellMainEngine(mainMethod::cancel);
}

void TranslationRelay::acceptToEditor(const std::string& text) {
  tellMainEngine(mainMethod::acceptToEditor, Map{{"text", text}});
}

}  // namespace zephyx
