#include "backends/qt/quick/QuickScene.h"

#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QWidget>
#include <unordered_map>

#include "backends/qt/views/QtViewBase.h"
#include "backends/qt/views/ViewRegistry.h"

namespace tarni::qt {
namespace {

using Hosts = std::unordered_map<const QObject*, QPointer<QWidget>>;

Hosts& hosts() {
  static auto* const shared = new Hosts;
  return *shared;
}

}  // namespace

void setSceneHost(QQuickWindow& scene, QWidget& host) {
  const auto [place, isNew] = hosts().insert_or_assign(&scene, &host);
  if (!isNew) return;
  QObject::connect(&scene, &QObject::destroyed, [](QObject* gone) { hosts().erase(gone); });
}

QWidget* sceneHost(const QQuickWindow& scene) {
  const auto known = hosts().find(&scene);
  return known == hosts().end() ? nullptr : known->second.data();
}

platform::UIViewRef viewOfScene(QQuickWindow& scene) {
  QWidget* const host = sceneHost(scene);
  return host ? viewOfWidget(host) : viewOfWindow(&scene);
}

QWindow* topLevelOfScene(QQuickWindow& scene) {
  const QWidget* const host = sceneHost(scene);
  return host ? host->window()->windowHandle() : &scene;
}

platform::UIWindowRef windowViewOfScene(QQuickWindow& scene) {
  QWidget* const host = sceneHost(scene);
  return host ? windowOfWidget(host) : viewOfWindow(&scene);
}

QPointF originOfScene(const QQuickWindow& scene) {
  const QWidget* const host = sceneHost(scene);
  return host ? QPointF(host->mapTo(host->window(), QPoint())) : QPointF();
}

QRectF shownPartOfScene(const QQuickWindow& scene) {
  QWidget* const host = sceneHost(scene);
  const platform::UIViewRef shown = host ? viewOfWidget(host) : nullptr;
  if (!shown) return QRectF({}, scene.size());
  return static_cast<const QtViewBase&>(*shown).shownShape();
}

QQuickItem* focusItemOfScene(const QQuickWindow& scene) {
  QQuickItem* item = scene.contentItem();
  while (item && item->isFocusScope() && item->scopedFocusItem()) item = item->scopedFocusItem();
  return item;
}

}  // namespace tarni::qt
