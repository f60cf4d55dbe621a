// What the agent finds when it loads itself into an application: Info.plist is this program's.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>

#include "agent/WebView/WebView.h"

namespace tarni::test {
namespace {

// The same program, started anew.
void expectScriptsFrom(const std::string& address) {
  EXPECT_EXIT(_exit(REMOTE_CDN_URL == address ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST(LoadingDeathTest, ThePageScriptsAddressIsTheEnvironmentsOrElseTheApplications) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  unsetenv("TARNI_SCRIPTS");
  expectScriptsFrom("file:///scripts/of/the/application");
  setenv("TARNI_SCRIPTS", "file:///scripts/of/the/environment", 1);
  expectScriptsFrom("file:///scripts/of/the/environment");
}

}  // namespace
}  // namespace tarni::test
