#include <gtest/gtest.h>

#include <QtWidgets/QApplication>

#include "backends/qt/QtPlatform.h"
#include "backends/qt/quick/QuickExtension.h"
#include "backends/qt/views/QtExtension.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_QUICK_BACKEND", "software");
  qputenv("QT_QUICK_CONTROLS_STYLE", "Basic");
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  tarni::platform::install(tarni::qt::qtPlatform());
  tarni::qt::extensions().add(std::make_unique<tarni::qt::QuickExtension>());
  return RUN_ALL_TESTS();
}
