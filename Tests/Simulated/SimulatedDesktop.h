#pragma once

#include "Platform/LocalNotificationCenter.h"
#include "Tests/Simulated/SimulatedAccessibility.h"
#include "Tests/Simulated/SimulatedAlerts.h"
#include "Tests/Simulated/SimulatedApplication.h"
#include "Tests/Simulated/SimulatedAudioHardware.h"
#include "Tests/Simulated/SimulatedDirectories.h"
#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedDisplays.h"
#include "Tests/Simulated/SimulatedEngine.h"
#include "Tests/Simulated/SimulatedEngines.h"
#include "Tests/Simulated/SimulatedEventMonitors.h"
#include "Tests/Simulated/SimulatedEventTaps.h"
#include "Tests/Simulated/SimulatedFaults.h"
#include "Tests/Simulated/SimulatedHostStatistics.h"
#include "Tests/Simulated/SimulatedHotKeys.h"
#include "Tests/Simulated/SimulatedImages.h"
#include "Tests/Simulated/SimulatedKeyboard.h"
#include "Tests/Simulated/SimulatedKeyboardLayout.h"
#include "Tests/Simulated/SimulatedKeychain.h"
#include "Tests/Simulated/SimulatedPasteboard.h"
#include "Tests/Simulated/SimulatedPreviewPanel.h"
#include "Tests/Simulated/SimulatedScreens.h"
#include "Tests/Simulated/SimulatedSoftwareUpdate.h"
#include "Tests/Simulated/SimulatedStatusBar.h"
#include "Tests/Simulated/SimulatedSystemLog.h"
#include "Tests/Simulated/SimulatedTemperatureSensors.h"
#include "Tests/Simulated/SimulatedTextMetrics.h"
#include "Tests/Simulated/SimulatedUrlSession.h"
#include "Tests/Simulated/SimulatedUserDefaults.h"
#include "Tests/Simulated/SimulatedViewController.h"
#include "Tests/Simulated/SimulatedWindow.h"
#include "Tests/Simulated/SimulatedWorkspace.h"

namespace zephyx {

class Platform;

/// A complete machine in memory: the face by which a test controls and inspects it. The host gets
/// to see `platform()` only.
class SimulatedDesktop {
 public:
  SimulatedDesktop();
  SimulatedDesktop(const SimulatedDesktop&) = delete;
  SimulatedDesktop& operator=(const SimulatedDesktop&) = delete;
  ~SimulatedDesktop();

  Platform& platform() { return *platform_; }

  SimulatedFaults faults;
  SimulatedDispatch dispatch{faults};
  SimulatedSystemLog systemLog;
  SimulatedAccessibility accessibility;
  SimulatedDirectories directories;
  SimulatedUserDefaults userDefaults{std::make_shared<SimulatedUserDefaults::Store>()};
  SimulatedKeychain keychain{dispatch};
  SimulatedUrlSession urlSession{dispatch};
  SimulatedAudioHardware audioHardware{dispatch};
  SimulatedImages images;
  SimulatedHostStatistics hostStatistics{dispatch};
  SimulatedTemperatureSensors temperatureSensors{dispatch};
  SimulatedScreens screens;
  SimulatedDisplays displays{dispatch};
  SimulatedTextMetrics textMetrics;
  SimulatedKeyboardLayout keyboardLayout;
  LocalNotificationCenter defaultCenter;
  LocalNotificationCenter workspaceCenter;
  SimulatedPasteboard pasteboard{dispatch, faults};
  SimulatedWorkspace workspace{dispatch, pasteboard, keyboardLayout};
  SimulatedApplication application{dispatch, workspace, defaultCenter, screens};
  SimulatedAlerts alerts{dispatch, application, faults};
  SimulatedEngines engines{dispatch, faults};
  SimulatedEventMonitors eventMonitors{dispatch};
  SimulatedEventTaps eventTaps{dispatch};
  SimulatedHotKeys hotKeys{dispatch};
  SimulatedPreviewPanel previewPanel{application, defaultCenter};
  SimulatedStatusBar statusBar{dispatch, faults};
  SimulatedSoftwareUpdate softwareUpdate{dispatch};
  SimulatedKeyboard keyboard{{dispatch, accessibility, eventTaps, hotKeys, workspace, application,
                              alerts, eventMonitors, previewPanel}};

 private:
  std::unique_ptr<Platform> platform_;
};

}  // namespace zephyx
