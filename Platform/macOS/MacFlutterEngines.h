#pragma once

#include "Platform/FlutterEngine.h"

namespace zephyx {

/// Engines made here know the application's delegate, which passes the application's life on to
/// them; so it must be in place before the first of them.
class MacFlutterEngines final : public FlutterEngines {
 public:
  std::shared_ptr<FlutterEngine> makeEngine(const std::string& name) override;
  std::shared_ptr<FlutterViewController> makeViewController(
      std::shared_ptr<FlutterEngine> engine) override;
  /// The engine starts when the view is about to appear.
  std::shared_ptr<FlutterViewController> makeViewControllerWithDefaultEngine() override;
  void registerPlugins(FlutterViewController& controller) override;
};

}  // namespace zephyx
