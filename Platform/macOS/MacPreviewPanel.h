#pragma once

#import <Foundation/Foundation.h>

#include "Platform/QuickLook.h"

@class ZephyxPreviewSource;

namespace zephyx {

/// The Quick Look panel of the process. It is made when it is first needed.
class MacPreviewPanel final : public PreviewPanel {
 public:
  MacPreviewPanel();
  MacPreviewPanel(const MacPreviewPanel&) = delete;
  MacPreviewPanel& operator=(const MacPreviewPanel&) = delete;
  ~MacPreviewPanel() override;

  void setController(PreviewPanelController* controller) override;
  void setLevel(int level) override;
  bool isVisible() const override;
  void reloadData() override;
  void makeKeyAndOrderFront() override;
  void orderOut() override;
  const void* notificationObject() const override;

 private:
  void takeControl();

  ZephyxPreviewSource* source_;
};

}  // namespace zephyx
