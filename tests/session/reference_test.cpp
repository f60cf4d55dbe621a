// docs/session.md says what the table of methods says.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "agent/session/protocol/Method.h"

namespace tarni::session {
namespace {

TEST(SessionReference, IsTheTableOfMethods) {
  std::ifstream file(std::string(TARNI_SOURCE_DIR) + "/docs/session.md");
  std::ostringstream written;
  written << file.rdbuf();
  EXPECT_EQ(written.str(), reference()) << "cmake --build … --target session_reference mends it";
}

}  // namespace
}  // namespace tarni::session
