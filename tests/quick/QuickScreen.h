// What the tests of Qt Quick share: a window made of QML text. Everything runs on the GUI thread.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <memory>
#include <string>

#include "backends/qt/quick/QuickRegistry.h"
#include "backends/qt/quick/QuickView.h"
#include "platform/UIKit/UIControls.h"
#include "tests/support/QtScreen.h"

namespace tarni::test {

namespace uikit = platform::uikit;
using platform::as;
using platform::CGPoint;
using platform::CGRect;
using platform::UIViewRef;

class QuickScreen : public testing::Test {
 protected:
  // Shows a window of 400 x 300 points with these items.
  void show(const std::string& items) {
    const std::string text =
        "import QtQuick 2.15\nimport QtQuick.Window 2.15\nimport QtQuick.Controls 2.15\n"
        "import QtQml.Models 2.15\n"
        "ApplicationWindow { visible: true; width: 400; height: 300; color: \"white\"\n" +
        items + "}";
    QQmlComponent component(&engine_);
    component.setData(QByteArray::fromStdString(text), QUrl("file:///application/main.qml"));
    window_.reset(qobject_cast<QQuickWindow*>(component.create()));
    ASSERT_TRUE(window_) << component.errorString().toStdString();
    ASSERT_TRUE(runUntil([&] { return window_->isExposed(); }));
    // The off-screen platform of Qt 5 takes the points of a new window for pixels.
    window_->resize(400, 300);
    ASSERT_TRUE(runUntil([&] { return window_->contentItem()->width() == 400; }));
  }

  // The object of that name or with that title, wherever it stands.
  template <typename Object = QQuickItem>
  Object* object(const char* name) const {
    return window_->findChild<Object*>(QString::fromLatin1(name));
  }
  UIViewRef view(const char* name) const { return qt::viewOfItem(object(name)); }
  UIViewRef root() const { return qt::viewOfWindow(window_.get()); }

  // The names of the items whose views these are; the class for one without a name.
  static std::vector<std::string> names(std::span<const UIViewRef> views) {
    std::vector<std::string> all;
    for (const UIViewRef& view : views) {
      all.push_back(view->accessibilityIdentifier().value_or(view->getClass()->name()));
    }
    return all;
  }
  static std::vector<std::string> namesIn(const UIViewRef& view) { return names(view->subviews()); }

  static std::string nameOf(const UIViewRef& view) {
    return view ? view->accessibilityIdentifier().value_or(view->getClass()->name()) : "nothing";
  }
  // The view that a finger meets there.
  std::string met(double x, double y) const { return nameOf(root()->hitTest({x, y})); }
  std::string metInMiddle(const char* name) const {
    const CGRect bounds = view(name)->bounds();
    const CGPoint middle = view(name)->convertPointToWindow({bounds.midX(), bounds.midY()});
    return met(middle.x, middle.y);
  }

  QQmlEngine engine_;
  std::unique_ptr<QQuickWindow> window_;
};

}  // namespace tarni::test
