#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "Channel/MethodChannel.h"

namespace zephyx {

class Platform;

/// Carries the messages of text generation between the translate panel's engine, which shows, and
/// the main engine, which generates. A message for an end that is not there is dropped. Main
/// thread.
class TranslationRelay {
 public:
  static TranslationRelay& shared();
  explicit TranslationRelay(Platform& platform);

  /// The main window's channel.
  std::weak_ptr<MethodChannel> notesChannel;
  /// The translate panel's channel.
  std::weak_ptr<MethodChannel> panelChannel;

  // To the panel.

  void showEditorText(const std::string& text, const std::string& mode);
  /// `gen` is the number that the panel gave the request.
  void forwardToken(const std::string& token, std::int64_t gen);
  /// The same, with a map that holds nothing but "token" and "gen": sent as it came.
  void forwardToken(const Value& arguments);
  void forwardDone(std::int64_t gen);
  /// `code` may be null.
  void forwardError(const std::string& message, std::int64_t gen, const std::string* code);
  void dismissPanel();

  // To the main engine.

  void requestGeneration(Map request);
  void cancelGeneration();
  void acceptToEditor(const std::string& text);

 private:
  void tellPanel(std::string_view method, const Value& arguments = {}) const;
  void tellMainEngine(std::string_view method, const Value& arguments = {}) const;
};

}  // namespace zephyx
