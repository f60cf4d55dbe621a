// The handles of the session channel.
#include <malloc.h>

#include "agent/session/screen/Elements.h"
#include "backends/headless/views/WebView.h"
#include "tests/support/Screen.h"

namespace tarni::test {
namespace {

using Handles = Screen;

TEST_F(Handles, OfDocumentsThatAWebViewHasLeftAreForgotten) {
  session::Elements& elements = session::Elements::sharedInstance();
  const auto other = headless::build<headless::WebView>().in(*window);
  const auto page = headless::build<headless::WebView>().in(*window);
  const auto next = headless::build<headless::WebView>().in(*window);
  const auto show = [&](const std::string& document) {
    session::Handle last = 0;
    for (long node = 1; node <= 100; ++node) last = elements.handleOf(page, document, node);
    return last;
  };
  const session::Handle beside[] = {elements.handleOf(other, "a", 1),
                                    elements.handleOf(next, "a", 1)};
  const session::Handle left = show("first");
  const std::size_t before = mallinfo2().uordblks;
  for (int document = 0; document < 100; ++document) show(std::to_string(document));
  EXPECT_LT(mallinfo2().uordblks, before + 10'000);
  EXPECT_EQ(elements.pageElementOf(left), nullptr);
  EXPECT_ANY_THROW(elements.viewOf(left));
  EXPECT_EQ(show("99"), show("99")) << "the page that is shown keeps its handles";
  for (const session::Handle handle : beside) EXPECT_NE(elements.pageElementOf(handle), nullptr);
}

}  // namespace
}  // namespace tarni::test
