// Tells the hooks of appearance of the pages that stacks, tabs and wizards turn to: a page is
// loading from when it is chosen until the event loop has laid it out. GUI thread.
#pragma once

#include <QtWidgets/QWidget>

namespace tarni::qt {

// For as long as the widget lives; nothing when it has no pages.
void watchPages(QWidget& widget);

}  // namespace tarni::qt
