// WebEngineExtension: what the backend knows of the web engine in widgets. GUI thread.
#pragma once

#include "backends/qt/views/QtExtension.h"
#include "backends/qt/web/QtURLLoader.h"

namespace tarni::qt {

class WebEngineExtension : public QtExtension {
 public:
  std::shared_ptr<QtView> makeView(QWidget& widget) override;
  platform::NSURLLoader* urlLoader() override { return &urlLoader_; }

 private:
  QtURLLoader urlLoader_;
};

}  // namespace tarni::qt
