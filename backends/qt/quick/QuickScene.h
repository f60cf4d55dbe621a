// QuickScene: where a window of Qt Quick is shown: on the screen, or inside a widget's window,
// which draws it (QQuickWidget) or holds it (a window container). GUI thread.
#pragma once

#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtQuick/QQuickWindow>

#include "platform/UIKit/UIView.h"

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace tarni::qt {

// Makes `host` the widget that shows the scene from now on.
void setSceneHost(QQuickWindow& scene, QWidget& host);
// Null for a scene in a window of its own.
QWidget* sceneHost(const QQuickWindow& scene);

// The view that the scene's topmost items stand in: the window's or the host's. Null when it is
// shown nowhere.
platform::UIViewRef viewOfScene(QQuickWindow& scene);
// The top-level window, its view, and where in it the scene begins.
QWindow* topLevelOfScene(QQuickWindow& scene);
platform::UIWindowRef windowViewOfScene(QQuickWindow& scene);
QPointF originOfScene(const QQuickWindow& scene);
// What the window or the host shows of it, in its own coordinates.
QRectF shownPartOfScene(const QQuickWindow& scene);

// The item that has the keyboard, or would have it if the window were active. Null for none.
QQuickItem* focusItemOfScene(const QQuickWindow& scene);

}  // namespace tarni::qt
