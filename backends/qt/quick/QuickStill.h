// QuickStill: a scene as it was drawn last. Whoever describes a page asks for the pictures of
// hundreds of its views; as long as the program does not run in between, nothing of that changes.
// GUI thread.
#pragma once

#include <QtGui/QImage>
#include <QtQuick/QQuickWindow>
#include <memory>

namespace tarni::qt {

struct QuickStill {
  QImage image;
  std::unique_ptr<QQuickItem> background;  // that was drawn behind all others; mostly null
};

// Null when the scene has changed since it was drawn, or the program has run. Valid until then.
QuickStill* stillOf(QQuickWindow& scene);

// The scene has just been drawn. The background goes with what is kept: it would be a change of the
// scene if it went before. Nothing is kept of a scene that has gone (null).
void keepStill(QQuickWindow* scene, QImage image, std::unique_ptr<QQuickItem> background);

}  // namespace tarni::qt
