// Tells the hooks of appearance of the popups and the pages that scenes show: they are loading from
// when they come until their transition has ended. GUI thread.
#pragma once

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace tarni::qt {

// The popups of the window, those that are made later included.
void watchPopups(QQuickWindow& window);

// The pages of a StackView.
void watchPages(QQuickItem& stackView);

}  // namespace tarni::qt
