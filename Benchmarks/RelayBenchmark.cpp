#include <benchmark/benchmark.h>

#include <map>
#include <memory>

#include "Benchmarks/AllocationCounter.h"
#include "Channel/StandardMethodCodec.h"
#include "Platform/FlutterEngine.h"
#include "Runner/AppDelegate.h"
#include "Runner/SharedObjects.h"
#include "Tests/Simulated/SimulatedDesktop.h"
#include "Tests/Simulated/SimulatedPlatform.h"

// A token on its way through the host: from the bytes that the main engine sent to the bytes that
// the translate panel's engine gets, with nothing of the engines' own in between.

namespace zephyx {
namespace {

class DirectMessenger final : public BinaryMessenger {
 public:
  void send(const std::string&, Bytes message, BinaryReply) override {
    ++messages;
    benchmark::DoNotOptimize(message.data());
  }
  Registration setMessageHandler(const std::string&, BinaryMessageHandler handler) override {
    handler_ = std::move(handler);
    return Registration([this] { handler_ = nullptr; });
  }
  void receive(BytesView message) {
    handler_(message, [](BytesView reply) { benchmark::DoNotOptimize(reply.data()); });
  }

  std::size_t messages = 0;

 private:
  BinaryMessageHandler handler_;
};

class DirectEngine final : public FlutterEngine {
 public:
  bool run(const std::string&) override { return true; }
  std::shared_ptr<BinaryMessenger> binaryMessenger() const override { return messenger; }
  void shutDown() override {}

  const std::shared_ptr<DirectMessenger> messenger = std::make_shared<DirectMessenger>();
};

class NoView final : public FlutterViewController {
 public:
  explicit NoView(std::shared_ptr<FlutterEngine> engine) : engine_(std::move(engine)) {}
  std::shared_ptr<FlutterEngine> engine() const override { return engine_; }
  void makeBackgroundTransparent() override {}
  Rect viewBounds() const override { return {}; }
  void setViewAlpha(double) override {}
  std::shared_ptr<VisualEffectView> addVisualEffectView() override { return nullptr; }

 private:
  std::shared_ptr<FlutterEngine> engine_;
};

class DirectEngines final : public FlutterEngines {
 public:
  std::shared_ptr<FlutterEngine> makeEngine(const std::string& name) override {
    return made[name] = std::make_shared<DirectEngine>();
  }
  std::shared_ptr<FlutterViewController> makeViewController(
      std::shared_ptr<FlutterEngine> engine) override {
    return std::make_shared<NoView>(std::move(engine));
  }
  std::shared_ptr<FlutterViewController> makeViewControllerWithDefaultEngine() override {
    return makeViewController(makeEngine("main"));
  }
  void registerPlugins(FlutterViewController&) override {}

  std::map<std::string, std::shared_ptr<DirectEngine>> made;
};

class DirectPlatform final : public SimulatedPlatform {
 public:
  using SimulatedPlatform::SimulatedPlatform;
  FlutterEngines& flutterEngines() override { return engines; }

  DirectEngines engines;
};

void token(benchmark::State& state) {
  SimulatedDesktop desktop;
  DirectPlatform platform(desktop);
  SharedObjects sharedObjects(platform);
  AppDelegate delegate(platform);
  desktop.application.launch(delegate);
  desktop.dispatch.settle();

  auto& main = *platform.engines.made.at("main")->messenger;
  auto& panel = *platform.engines.made.at("translate_engine")->messenger;
  const auto message = StandardMethodCodec::encodeCall("headlessTranslateToken",
                                                       Map{{"token", "hello"}, {"gen", 42}});
  const auto before = panel.messages;
  {
    const AllocationCounter counter(state);
    for (auto _ : state) main.receive(message);
  }
  if (panel.messages - before != static_cast<std::size_t>(state.iterations())) {
    state.SkipWithError("a token did not arrive");
  }
}
BENCHMARK(token);

}  // namespace
}  // namespace zephyx
