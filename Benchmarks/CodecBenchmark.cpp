#include <benchmark/benchmark.h>

#include <functional>
#include <map>

#include "Benchmarks/AllocationCounter.h"
#include "Channel/MethodChannel.h"
#include "Channel/StandardMessageCodec.h"

namespace zephyx {
namespace {

Value tokenArguments() {
  return Map{{"token", "hello"}, {"gen", 42}};
}

Value clipboardEntry() {
  return Map{
      {"type", "image"},
      {"text", "A line of text as people copy it, some sixty characters long."},
      {"filePath", "/home/someone/Pictures/Screenshots/2024-05-17 10-22-31.png"},
      {"imageBlobPath", "/home/someone/.local/share/zephyx/blobs/5d41402abc4b2a76b9719d91.png"},
      {"thumbnailPath", "/home/someone/.local/share/zephyx/thumbnails/5d41402abc4b2a76.png"},
      {"byteSize", 182'734},
      {"width", 1920},
      {"height", 1080},
      {"sourceAppName", "Image Viewer"},
      {"sourceAppBundleId", "org.example.ImageViewer"},
      {"sourceAppIconPath", "/home/someone/.local/share/zephyx/icons/org.example.ImageViewer.png"},
      {"copiedAtEpochMs", std::int64_t{1'715'934'151'123}},
  };
}

Value clipboardHistory() {
  return List(1'000, clipboardEntry());
}

constexpr std::size_t longTextSize = 20'000'000;

Value asciiText() {
  return std::string(longTextSize, 'x');
}

Value mixedText() {
  constexpr std::string_view sentence = "El veloz murciélago hindú comía feliz cardillo y kiwi. ";
  std::string text;
  text.reserve(longTextSize);
  while (text.size() + sentence.size() <= longTextSize) text += sentence;
  return text;
}

Value chineseText() {
  std::string text;
  text.reserve(longTextSize);
  while (text.size() + 3 <= longTextSize) text += "\u5b57";
  return text;
}

void roundTrip(benchmark::State& state, const std::function<Value()>& make) {
  const Value value = make();
  std::size_t size = 0;
  AllocationCounter counter(state);
  for (auto _ : state) {
    const Bytes bytes = StandardMessageCodec::encode(value);
    size = bytes.size();
    auto decoded = StandardMessageCodec::decode(bytes);
    if (!decoded) state.SkipWithError("does not decode");
    benchmark::DoNotOptimize(decoded);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}
BENCHMARK_CAPTURE(roundTrip, tokenArguments, tokenArguments);
BENCHMARK_CAPTURE(roundTrip, clipboardEntry, clipboardEntry);
BENCHMARK_CAPTURE(roundTrip, clipboardHistory1000, clipboardHistory);
BENCHMARK_CAPTURE(roundTrip, asciiText20MB, asciiText);
BENCHMARK_CAPTURE(roundTrip, mixedText20MB, mixedText);
BENCHMARK_CAPTURE(roundTrip, chineseText20MB, chineseText);

// The least that a round trip of a long text can do: into a message and out of it again.
void copyTwice(benchmark::State& state) {
  const std::string text(longTextSize, 'x');
  AllocationCounter counter(state);
  for (auto _ : state) {
    const auto* begin = reinterpret_cast<const std::uint8_t*>(text.data());
    const Bytes bytes(begin, begin + text.size());
    std::string copy(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    benchmark::DoNotOptimize(copy);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(longTextSize));
}
BENCHMARK(copyTwice);

// Hands every message straight to the handler.
class DirectMessenger : public BinaryMessenger {
 public:
  void send(const std::string& channel, Bytes message, BinaryReply reply) override {
    handlers_.at(channel)(message, std::move(reply));
  }
  Registration setMessageHandler(const std::string& channel,
                                 BinaryMessageHandler handler) override {
    handlers_[channel] = std::move(handler);
    return {};
  }

 private:
  std::map<std::string, BinaryMessageHandler> handlers_;
};

void answeredCall(benchmark::State& state) {
  const auto messenger = std::make_shared<DirectMessenger>();
  MethodChannel channel(messenger, "channel", {});
  channel.setMethodCallHandler([](const MethodCall&, MethodResult result) { result.success(); });
  const Value arguments = tokenArguments();
  AllocationCounter counter(state);
  for (auto _ : state) {
    channel.invokeMethod("translateToken", arguments,
                         [](const MethodReply& reply) { benchmark::DoNotOptimize(&reply); });
  }
}
BENCHMARK(answeredCall);

}  // namespace
}  // namespace zephyx
