#include "backends/qt/webengine/WebEngineExtension.h"

#include "backends/qt/webengine/QtWebView.h"

namespace tarni::qt {

std::shared_ptr<QtView> WebEngineExtension::makeView(QWidget& widget) {
  auto* const view = qobject_cast<QWebEngineView*>(&widget);
  return view ? std::make_shared<QtWebView>(*view) : nullptr;
}

}  // namespace tarni::qt
