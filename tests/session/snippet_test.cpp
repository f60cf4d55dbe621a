// The lines of Python in docs/session.md do what they say.
#include <gtest/gtest.h>

#include "tests/support/Program.h"
#include "tests/support/SessionWire.h"

namespace tarni::test {
namespace {

std::string pythonIn(const std::string& path) {
  const std::string page = contents(path);
  const std::string fence = "```python\n";
  const std::size_t begin = page.find(fence) + fence.size();
  return page.substr(begin, page.find("```", begin) - begin);
}

TEST(SessionSnippet, FindsAndClicks) {
  const SessionFolder folder;
  const Program program({built("bin/tarni-headless")}, {{"TARNI_SESSION", folder.socket()}});
  const SessionWire wire(folder.socket());
  const nlohmann::json field = wire.find({{"identifier", "username"}});
  wire.ask("element.setText", {{"element", field["element"]}, {"text", "Ada"}});
  const std::string snippet = pythonIn(std::string(TARNI_SOURCE_DIR) + "/docs/session.md");
  const std::string printed = run({"python3", "-c", snippet}, {{"TARNI_SESSION", folder.socket()}});
  EXPECT_NE(printed.find("busyMs"), std::string::npos) << printed;
  wire.await({{"find", {{"text", "Hello, Ada"}}}});
}

}  // namespace
}  // namespace tarni::test
