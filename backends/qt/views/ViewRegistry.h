// ViewRegistry: the one place that turns objects of the toolkit into views and back. For one object
// it always gives the same view as long as the object lives. GUI thread only.
#pragma once

#include <QtCore/qglobal.h>
#include <QtCore/QPoint>
#include <functional>
#include <memory>

#include "platform/UIKit/UIView.h"

QT_BEGIN_NAMESPACE
class QObject;
class QWidget;
class QWindow;
QT_END_NAMESPACE

namespace tarni::qt {

class QtView;

// How views are made: one for each widget, when it is first asked for. Given once, before that.
void makeViewsWith(std::function<std::shared_ptr<QtView>(QWidget&)> make);

// The view of a widget (a top-level widget gives a view of the kind UIWindow, unless it is a
// control that stands in one, see QtSoleWindow.h). Null for null and for widgets of the agent
// itself (highlights, toasts).
platform::UIViewRef viewOfWidget(QWidget* widget);

// The window-kind view that the widget's view is or stands in; null as above.
platform::UIWindowRef windowOfWidget(QWidget* widget);

// The widget that draws the view: the widget itself, or the item view of a row, the tab bar of a
// tab. Null when it has gone, and for views of other backends.
QWidget* widgetOfView(const platform::UIViewRef& view);

// The top-level native window that the view is shown in; null when it is in none, and for views of
// other backends.
QWindow* nativeWindowOf(const platform::UIViewRef& view);

// False for a view that answers to the mouse alone.
bool takesTouches(const platform::UIViewRef& view);

// The window that it is embedded in, or itself; null for null.
QWindow* topLevelOf(QWindow* window);

// The window-kind view whose native window this is; null when neither a widget nor an extension
// (QtExtension.h) draws it.
platform::UIWindowRef viewOfWindow(QWindow* window);

// The scroll area whose viewport the widget is, or null. A viewport has no view of its own: its
// view is the scroll area's.
QWidget* scrollAreaOfViewport(const QWidget* widget);

}  // namespace tarni::qt
