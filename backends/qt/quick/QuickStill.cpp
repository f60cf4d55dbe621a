#include "backends/qt/quick/QuickStill.h"

#include <private/qquickwindow_p.h>

#include <QtCore/QPointer>
#include <utility>

#include "backends/qt/program/QtProgram.h"

namespace tarni::qt {
namespace {

struct Last {
  QPointer<QQuickWindow> scene;
  QuickStill still;
};

Last& last() {
  static auto* const shared = new Last;
  return *shared;
}

}  // namespace

QuickStill* stillOf(QQuickWindow& scene) {
  const bool isSame = last().scene == &scene && !QQuickWindowPrivate::get(&scene)->dirtyItemList;
  return isSame ? &last().still : nullptr;
}

void keepStill(QQuickWindow* scene, QImage image, std::unique_ptr<QQuickItem> background) {
  last() = {scene, {std::move(image), std::move(background)}};
  postToProgram([] { last() = {}; });
}

}  // namespace tarni::qt
