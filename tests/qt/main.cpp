#include <gtest/gtest.h>

#include <QtWidgets/QApplication>

#include "backends/qt/QtPlatform.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  tarni::qt::qtPlatform();
  return RUN_ALL_TESTS();
}
