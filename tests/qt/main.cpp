#include <gtest/gtest.h>

#include <QtWidgets/QApplication>

#include "backends/qt/QtPlatform.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  tarni::platform::install(tarni::qt::qtPlatform());
  return RUN_ALL_TESTS();
}
