#include "Benchmarks/SessionLogs.h"

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zephyx {
namespace {

namespace fs = std::filesystem;

/// Text as it stands inside a JSON string, to cut pieces from.
class Prose {
 public:
  Prose() {
    constexpr std::array<std::string_view, 24> words = {
        "the",    "file",    "returns", "a",         "value", "of",    "when",   "test",
        "fails",  "\\n",     "\\n\\t",  "\\\"name",  "\\\"",  "const", "line",   "std::string",
        "should", "src/App", "0x7f3a",  "{ return;", "},",    "größe", "→ done", "usage"};
    std::mt19937 random(2);
    for (std::size_t word = 0; word < 200'000; ++word) {
      starts_.push_back(text_.size());
      // The last words are rare: those beyond ASCII, and the one that is looked for.
      const auto kind = random() % 40 == 0 ? 21 + random() % 3 : random() % 21;
      text_.append(words[kind]).append(" ");
    }
  }

  std::string_view piece(std::size_t length, std::size_t position) const {
    const auto start = starts_[position % (starts_.size() / 2)];
    const auto last = std::upper_bound(starts_.begin(), starts_.end(), start + length) - 1;
    return std::string_view(text_).substr(start, *last - start);
  }

 private:
  std::string text_;
  std::vector<std::size_t> starts_;
};

/// The lines of one session.
class Session {
 public:
  explicit Session(std::size_t seed) : random_(static_cast<unsigned>(seed)) {}

  void appendLine(std::string& text) {
    static const Prose prose;
    second_ = (second_ + pick(4)) % 3600;
    const auto kind = pick(120);
    if (kind < 40) {
      appendAnswer(text, prose.piece(400 + pick(3000), pick(1u << 31)));
    } else if (kind < 110) {
      const auto length = pick(40) == 0 ? 100'000 : 1000 + pick(9000);
      appendToolResult(text, prose.piece(length, pick(1u << 31)));
    } else {
      appendHead(text, "progress");
      text.append(R"("data":{"type":"hook","name":"after","status":"done"}})").append("\n");
    }
  }

 private:
  void appendHead(std::string& text, const char* type) {
    std::array<char, 400> head;
    std::snprintf(head.data(), head.size(),
                  R"({"parentUuid":"%08x-5f0d-4b7e-9f53-%012x","isSidechain":false,)"
                  R"("userType":"external","cwd":"/home/user/project","sessionId":)"
                  R"("%08x-1c3d-4e5f-8a9b-0123456789ab","version":"1.0.88","gitBranch":"main",)"
                  R"("type":"%s","uuid":"%08x-7777-4888-9999-aaaaaaaaaaaa",)"
                  R"("timestamp":"2025-06-01T12:%02u:%02u.%03uZ",)",
                  pick(1u << 31), pick(1u << 31), pick(1u << 31), type, pick(1u << 31),
                  second_ / 60, second_ % 60, pick(1000));
    text.append(head.data());
  }

  void appendAnswer(std::string& text, std::string_view answer) {
    appendHead(text, "assistant");
    std::array<char, 500> usage;
    std::snprintf(usage.data(), usage.size(),
                  R"(],"stop_reason":null,"stop_sequence":null,"usage":{"input_tokens":%u,)"
                  R"("cache_creation_input_tokens":%u,"cache_read_input_tokens":%u,)"
                  R"("cache_creation":{"ephemeral_5m_input_tokens":%u,)"
                  R"("ephemeral_1h_input_tokens":0},"output_tokens":%u,)"
                  R"("service_tier":"standard"}},"requestId":"req_%08x"})",
                  pick(20), pick(5000), pick(90'000), pick(5000), pick(2000), pick(1u << 31));
    text.append(R"("message":{"id":"msg_01","type":"message","role":"assistant","model":")")
        .append(pick(5) == 0 ? "small-model-4" : "large-model-4-20250514")
        .append(R"(","content":[{"type":"text","text":")")
        .append(answer)
        .append(R"("},{"type":"tool_use","id":"toolu_01","name":"Read","input":{"file_path":)")
        .append(R"("/home/user/project/src/main.cpp","limit":200}})")
        .append(usage.data())
        .append("\n");
  }

  void appendToolResult(std::string& text, std::string_view result) {
    appendHead(text, "user");
    text.append(R"("message":{"role":"user","content":[{"tool_use_id":"toolu_01",)")
        .append(R"("type":"tool_result","content":")")
        .append(result)
        .append(R"("}]},"toolUseResult":{"stdout":"","interrupted":false}})")
        .append("\n");
  }

  unsigned pick(unsigned below) { return static_cast<unsigned>(random_()) % below; }

  std::mt19937 random_;
  unsigned second_ = 0;
};

}  // namespace

SessionLogs::SessionLogs(std::size_t bytes) {
  std::string name = (fs::temp_directory_path() / "zephyx-logs-XXXXXX").string();
  if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
  root_ = name;
  std::mt19937 random(1);
  std::lognormal_distribution<double> sizes(std::log(700'000), 1.1);
  std::string text;
  while (size_ < bytes) {
    const auto number = files_.size();
    const auto size = std::min(bytes - size_, static_cast<std::size_t>(sizes(random)) + 50'000);
    Session session(number);
    text.clear();
    while (text.size() < size) session.appendLine(text);
    const auto project = root_ / ("project-" + std::to_string(number % 48));
    fs::create_directories(project);
    files_.push_back(project / (std::to_string(number) + ".jsonl"));
    std::ofstream(files_.back(), std::ios::binary) << text;
    size_ += text.size();
  }
  // What is still to be written to the disk would be written while something is measured.
  ::sync();
}

SessionLogs::~SessionLogs() {
  std::error_code ignored;
  fs::remove_all(root_, ignored);
}

void SessionLogs::makeOldExceptOneIn(std::size_t share) {
  const auto old = fs::file_time_type::clock::now() - std::chrono::years(50);
  for (std::size_t index = 0; index < files_.size(); ++index) {
    if (index % share != 0) fs::last_write_time(files_[index], old);
  }
}

}  // namespace zephyx
