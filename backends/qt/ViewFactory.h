// Makes the view that fits a widget. Used by the registry only, which keeps one view a widget. GUI
// thread.
#pragma once

#include <memory>

#include "backends/qt/QtView.h"

namespace tarni::qt {

std::shared_ptr<QtView> makeView(QWidget& widget);

}  // namespace tarni::qt
