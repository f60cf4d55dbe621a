// QuickStill: a scene as it was drawn last, and what has been worked out about it. Whoever
// describes a page asks for the pictures of hundreds of its views, and for each what a finger meets
// there; as long as the program does not run in between, nothing of that changes. GUI thread.
#pragma once

#include <QtGui/QImage>
#include <QtQuick/QQuickWindow>
#include <memory>
#include <optional>

#include "backends/qt/quick/QuickReach.h"

namespace tarni::qt {

struct QuickStill {
  QImage image;
  std::unique_ptr<QQuickItem> background;  // that was drawn behind all others; mostly null
  std::optional<QuickReach> reach;         // null until somebody works it out
};

// Null when the scene has changed since it was drawn, or the program has run. Valid until then.
QuickStill* stillOf(QQuickWindow& scene);

// The scene has just been drawn. The background goes with what is kept: it would be a change of the
// scene if it went before. Nothing is kept of a scene that has gone (null).
void keepStill(QQuickWindow* scene, QImage image, std::unique_ptr<QQuickItem> background);

}  // namespace tarni::qt
