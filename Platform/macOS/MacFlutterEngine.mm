#import "Platform/macOS/MacFlutterEngine.h"

#import "Platform/macOS/MacBinaryMessenger.h"
#import "Platform/macOS/Strings.h"

namespace zephyx {

MacFlutterEngine::MacFlutterEngine(::FlutterEngine* engine)
    : engine_(engine), messenger_(std::make_shared<MacBinaryMessenger>(engine.binaryMessenger)) {}

// A running engine keeps itself alive through its task runner: without this it would never go.
MacFlutterEngine::~MacFlutterEngine() {
  shutDown();
}

bool MacFlutterEngine::run(const std::string& entryPoint) {
  return [engine_ runWithEntrypoint:nsString(entryPoint)];
}

std::shared_ptr<BinaryMessenger> MacFlutterEngine::binaryMessenger() const {
  return messenger_;
}

void MacFlutterEngine::shutDown() {
  messenger_->cut();
  [engine_ shutDownEngine];
}

}  // namespace zephyx
