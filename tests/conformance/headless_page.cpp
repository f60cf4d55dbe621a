// A headless program with a web view between native controls and a scripted page in it. A person
// presses its picture every half a second until commands come.
#include "backends/headless/Build.h"
#include "backends/headless/Environment.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/WebView.h"
#include "entry/StartAgent.h"
#include "tests/conformance/OrderPage.h"

namespace tarni::test {
namespace {

void pressPictures(headless::Environment& environment, const headless::WebView& view,
                   OrderPage& page) {
  if (page.isPlayed()) return;
  environment.finger().tap(view);
  // The page tells of it once the agent has the picture of the touch.
  environment.runLoop().after(0.25, [&page] { page.pressPicture(); });
  environment.runLoop().after(0.5, [&] { pressPictures(environment, view, page); });
}

int run() {
  static auto& environment = *new headless::Environment;
  environment.install();
  const auto window = environment.makeWindow();
  const auto close =
      headless::build<headless::Button>("Close order").frame({{20, 780}, {350, 44}}).in(*window);
  const auto second = std::make_shared<headless::Window>(platform::CGRect{{20, 20}, {350, 60}});
  environment.application().addWindow(second);
  headless::build<headless::Button>("Press here")
      .frame({{10, 10}, {200, 40}})
      .with([&](headless::Button& button) {
        button.onTap([close = close.get()] { close->setTitle("again=1"); });
      })
      .in(*second);
  const auto view =
      headless::build<headless::WebView>().frame({{0, 100}, {390, 600}}).in(*window).get();
  OrderPage page([&] {
    view->setLoading(true);
    environment.runLoop().after(0.3, [&] {
      page.showNext();
      view->setLoading(false);
    });
  });
  view->setEngine([&page](const std::string& script) { return page.evaluate(script); });
  entry::startAgent(platform::current());
  pressPictures(environment, *view, page);
  environment.runLoop().run();
  return 0;
}

}  // namespace
}  // namespace tarni::test

int main() {
  return tarni::test::run();
}
