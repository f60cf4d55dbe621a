// docs/session.md says what the table of methods says.
#include <gtest/gtest.h>

#include "agent/session/protocol/Method.h"
#include "tests/support/Files.h"

namespace tarni::session {
namespace {

TEST(SessionReference, IsTheTableOfMethods) {
  EXPECT_EQ(test::contents(std::string(TARNI_SOURCE_DIR) + "/docs/session.md"), reference())
      << "cmake --build … --target session_reference mends it";
}

}  // namespace
}  // namespace tarni::session
