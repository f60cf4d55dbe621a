#include <gtest/gtest.h>

#include <QtWidgets/QApplication>

#include "backends/qt/QtPlatform.h"
#ifdef ON_DISPLAY
#include "tests/support/Display.h"
#endif

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
#ifdef ON_DISPLAY
  const tarni::test::Display display;
  qputenv("DISPLAY", display.name().c_str());
  qputenv("QT_QPA_PLATFORM", "xcb");
#else
  qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
  const QApplication application(argc, argv);
  tarni::platform::install(tarni::qt::qtPlatform());
  return RUN_ALL_TESTS();
}
