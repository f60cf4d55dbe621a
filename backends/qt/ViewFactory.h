// Makes the view that fits a widget, for the registry, which keeps one view a widget. GUI thread.
#pragma once

#include <memory>

#include "backends/qt/views/QtView.h"

namespace tarni::qt {

// An extension that knows more of the widget than that it is one comes first. The pages of the
// widget are watched from then on.
std::shared_ptr<QtView> makeView(QWidget& widget);

}  // namespace tarni::qt
