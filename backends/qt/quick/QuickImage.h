// Pictures of scenes. GUI thread.
#pragma once

#include <QtCore/QRectF>
#include <QtQuick/QQuickWindow>

#include "platform/Task.h"
#include "platform/UIKit/UIImage.h"

namespace tarni::qt {

// What `part` of the scene shows, at the scale of its screen. A renderer that gives no picture at
// once is asked for one that comes with its next frame. Null for an empty part, an empty sheet for
// a window that is not shown.
platform::Task<platform::UIImageRef> drawScene(QQuickWindow& scene, QRectF part);

}  // namespace tarni::qt
