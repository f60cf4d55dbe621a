// QuickRegistry: what is known of each item, and the one view of it, as long as the item lives. GUI
// thread.
#pragma once

#include <QtQuick/QQuickItem>
#include <memory>

#include "backends/qt/quick/QuickKind.h"
#include "platform/UIKit/UIView.h"

namespace tarni::qt {

class QuickView;

struct KnownItem {
  // Transparent: no view, but what stands in it are views in the view above.
  enum class Role : std::uint8_t { View, Transparent, NoView };

  QuickKind kind = QuickKind::View;
  // The item's role below that parent, once it was asked for (QuickTree.h).
  Role role = Role::View;
  const QQuickItem* parent = nullptr;
  std::shared_ptr<QuickView> view;  // null until somebody asks for it
};

// Valid until the next call.
KnownItem& knownItem(const QQuickItem& item);

// The kind that the item had when it was first seen.
inline QuickKind kindOf(const QQuickItem& item) {
  return knownItem(item).kind;
}

// Null for null. Asks nothing about whether the item should be a view (QuickTree.h).
std::shared_ptr<QuickView> viewOfItem(QQuickItem* item);

// The item of a view; null when it has gone, and for every other view.
QQuickItem* itemOfView(const platform::UIViewRef& view);

// The view of a window of Qt Quick that stands on the screen.
platform::UIWindowRef viewOfQuickWindow(QQuickWindow& window);

}  // namespace tarni::qt
