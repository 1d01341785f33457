#import "Platform/macOS/MacFlutterEngines.h"

#import <FlutterMacOS/FlutterMacOS.h>

#include <utility>

#import "Platform/macOS/MacFlutterEngine.h"
#import "Platform/macOS/MacFlutterViewController.h"
#import "Platform/macOS/PluginRegistrant.h"
#import "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

// The host's interfaces have the names of the classes that they stand for.
using NativeEngine = ::FlutterEngine;
using NativeViewController = ::FlutterViewController;

}  // namespace

std::shared_ptr<FlutterEngine> MacFlutterEngines::makeEngine(const std::string& name) {
  return std::make_shared<MacFlutterEngine>([[NativeEngine alloc] initWithName:nsString(name)
                                                                       project:nil
                                                        allowHeadlessExecution:YES]);
}

std::shared_ptr<FlutterViewController> MacFlutterEngines::makeViewController(
    std::shared_ptr<FlutterEngine> engine) {
  auto made = std::dynamic_pointer_cast<MacFlutterEngine>(std::move(engine));
  if (!made) return nullptr;
  auto* controller = [[NativeViewController alloc] initWithEngine:made->engine()
                                                          nibName:nil
                                                           bundle:nil];
  return std::make_shared<MacFlutterViewController>(controller, std::move(made));
}

std::shared_ptr<FlutterViewController> MacFlutterEngines::makeViewControllerWithDefaultEngine() {
  auto* controller = [[NativeViewController alloc] initWithNibName:nil bundle:nil];
  return std::make_shared<MacFlutterViewController>(
      controller, std::make_shared<MacFlutterEngine>(controller.engine));
}

void MacFlutterEngines::registerPlugins(FlutterViewController& controller) {
  if (auto* made = dynamic_cast<MacFlutterViewController*>(&controller)) {
    [ZephyxPluginRegistrant registerPluginsWithRegistry:made->controller()];
  }
}

}  // namespace zephyx
