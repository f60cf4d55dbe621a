// QuickExtension: Qt Quick for this backend. Its windows are windows, its items are views. GUI
// thread.
#pragma once

#include "backends/qt/views/QtExtension.h"
#include "backends/qt/web/QtURLLoader.h"

namespace tarni::qt {

class QuickExtension final : public QtExtension {
 public:
  platform::UIWindowRef viewOfWindow(QWindow& window) override;
  platform::UIViewRef viewOfObject(QObject& object) override;
  std::shared_ptr<QtView> makeView(QWidget& widget) override;
  platform::NSURLLoader* urlLoader() override { return &urlLoader_; }

 private:
  QtURLLoader urlLoader_;
};

}  // namespace tarni::qt
