#include "backends/qt/views/ViewRegistry.h"

#include <QtGui/QWindow>
#include <QtWidgets/QAbstractScrollArea>
#include <QtWidgets/QWidget>
#include <unordered_map>

#include "backends/qt/program/ObjectEnds.h"
#include "backends/qt/program/OwnWidgets.h"
#include "backends/qt/views/QtExtension.h"
#include "backends/qt/views/QtSoleWindow.h"

namespace tarni::qt {
namespace {

struct Registry {
  std::function<std::shared_ptr<QtView>(QWidget&)> make;
  std::unordered_map<const QObject*, std::shared_ptr<QtView>> views;
  std::unordered_map<const QObject*, std::shared_ptr<QtSoleWindow>> soleWindows;
};

// Never destroyed: views are asked for until the process has gone.
Registry& registry() {
  static auto* const shared = new Registry;
  return *shared;
}

void forget(const QObject* gone) {
  registry().views.erase(gone);
  registry().soleWindows.erase(gone);
}

}  // namespace

void makeViewsWith(std::function<std::shared_ptr<QtView>(QWidget&)> make) {
  registry().make = std::move(make);
  whenObjectsEnd(forget);
}

platform::UIViewRef viewOfWidget(QWidget* widget) {
  if (!widget || isHiddenFromWalks(widget)) return nullptr;
  if (QWidget* const area = scrollAreaOfViewport(widget)) widget = area;
  const auto known = registry().views.find(widget);
  if (known != registry().views.end()) return known->second;
  const std::shared_ptr<QtView> view = registry().make(*widget);
  registry().views.insert_or_assign(widget, view);
  return view;
}

platform::UIWindowRef windowOfWidget(QWidget* widget) {
  if (!widget) return nullptr;
  QWidget* const top = widget->window();
  const platform::UIViewRef view = viewOfWidget(top);
  if (!view || !static_cast<const QtView&>(*view).isInSoleWindow()) return view;
  std::shared_ptr<QtSoleWindow>& window = registry().soleWindows[top];
  if (!window) window = std::make_shared<QtSoleWindow>(*top);
  return window;
}

QWidget* widgetOfView(const platform::UIViewRef& view) {
  const auto* const ours = dynamic_cast<const QtViewCore*>(view.get());
  return ours ? ours->widget() : nullptr;
}

QWindow* nativeWindowOf(const platform::UIViewRef& view) {
  const auto* const ours = dynamic_cast<const QtViewCore*>(view.get());
  return ours ? ours->nativeWindow() : nullptr;
}

bool takesTouches(const platform::UIViewRef& view) {
  const auto* const ours = dynamic_cast<const QtViewCore*>(view.get());
  return !ours || ours->takesTouches();
}

QWindow* topLevelOf(QWindow* window) {
  while (window && window->parent()) window = window->parent();
  return window;
}

platform::UIWindowRef viewOfWindow(QWindow* window) {
  // Without a platform window there is nothing that anybody could see or touch.
  if (!window || !window->handle()) return nullptr;
  QWidget* const widget = QWidget::find(window->winId());
  return widget ? windowOfWidget(widget) : extensions().viewOfWindow(*window);
}

QWidget* scrollAreaOfViewport(const QWidget* widget) {
  auto* const area = widget ? qobject_cast<QAbstractScrollArea*>(widget->parentWidget()) : nullptr;
  return area && area->viewport() == widget ? area : nullptr;
}

}  // namespace tarni::qt
