#pragma once

#include <memory>
#include <string>

#include "Platform/BinaryMessenger.h"
#include "Platform/Geometry.h"

namespace zephyx {

/// One screen program running in its own isolate. Main thread. Teardown order: message handlers
/// off, view controller out of its window, `shutDown`, released.
class FlutterEngine {
 public:
  virtual ~FlutterEngine() = default;
  /// Starts the named entry point; false when it cannot run.
  virtual bool run(const std::string& entryPoint) = 0;
  /// Lives as long as somebody holds it; silent after `shutDown`.
  virtual std::shared_ptr<BinaryMessenger> binaryMessenger() const = 0;
  /// Ends the isolate; pending replies are dropped.
  virtual void shutDown() = 0;
};

/// A frosted background beneath an engine's picture, dark, with a dimming layer on it. Belongs to
/// the view controller that made it. Main thread.
class VisualEffectView {
 public:
  virtual ~VisualEffectView() = default;
  virtual void setFrame(Rect frame) = 0;  ///< in the view's bottom-left coordinates
  virtual void setCornerRadius(double radius) = 0;
  virtual void setHidden(bool hidden) = 0;
};

/// The picture of an engine, to be put into a window. Main thread.
class FlutterViewController {
 public:
  virtual ~FlutterViewController() = default;
  virtual std::shared_ptr<FlutterEngine> engine() const = 0;
  /// Clear background colour of the controller and of its view's layer.
  virtual void makeBackgroundTransparent() = 0;
  virtual Rect viewBounds() const = 0;
  /// 0 invisible to 1 opaque, of the picture and the effect views in it.
  virtual void setViewAlpha(double alpha) = 0;
  /// HUD-window material, blending behind the window, always active, dark appearance, black at
  /// 60 % over it; inserted below everything else in the view. Hidden at first.
  virtual std::shared_ptr<VisualEffectView> addVisualEffectView() = 0;
};

/// Makes engines and their view controllers. Main thread.
class FlutterEngines {
 public:
  virtual ~FlutterEngines() = default;
  /// Without a project; may run without a view.
  virtual std::shared_ptr<FlutterEngine> makeEngine(const std::string& name) = 0;
  /// A view on an engine that was made here.
  virtual std::shared_ptr<FlutterViewController> makeViewController(
      std::shared_ptr<FlutterEngine> engine) = 0;
  /// A view with its own engine, running the default entry point "main".
  virtual std::shared_ptr<FlutterViewController> makeViewControllerWithDefaultEngine() = 0;
  /// Calls the generated plug-in registrant.
  virtual void registerPlugins(FlutterViewController& controller) = 0;
};

}  // namespace zephyx
