// tarni-headless-page [PAGE]: a headless program with native controls, a second window and, between
// them, a web view with the page of that file in a browser's engine. A person presses its picture
// every half a second, until the agent searches in it.
#include <fstream>

#include "backends/headless/Build.h"
#include "backends/headless/Environment.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/WebView.h"
#include "entry/StartAgent.h"
#include "tests/conformance/ChromiumPage.h"

namespace tarni::test {
namespace {

constexpr platform::CGRect kPage{{0, 100}, {390, 600}};
constexpr platform::CGPoint kPicture{159, 269};

// The page scripts.
class Files : public platform::NSURLLoader {
 public:
  platform::Task<std::optional<std::string>> stringWithContentsOfURL(std::string url) override {
    std::ifstream file(url.substr(url.find("://") + 3));
    co_return std::string(std::istreambuf_iterator<char>(file), {});
  }
};

// Tells of the page's loading what it is.
class EngineView : public headless::WebView {
 public:
  explicit EngineView(ChromiumPage& page) : page_(page) {
    setEngine([&page](const std::string& script) { return page.evaluateAtOnce(script); });
  }
  bool isLoading() const override { return page_.isLoading(); }

 private:
  ChromiumPage& page_;
};

void pressPictures(headless::Environment& environment, const headless::View& view,
                   ChromiumPage& page) {
  if (page.isSearched()) return;
  environment.finger().tap(view, kPicture);
  page.tap(kPicture.x, kPicture.y);
  environment.runLoop().after(0.5, [&] { pressPictures(environment, view, page); });
}

void showPage(headless::Environment& environment, headless::Window& window,
              const std::string& file) {
  auto& page = *new ChromiumPage("file://" + file, kPage.size.width, kPage.size.height);
  const auto view = headless::build<EngineView>(page).frame(kPage).in(window);
  platform::Platform parts = platform::current();
  parts.urlLoader = new Files;
  platform::install(parts);
  environment.runLoop().post(
      [&environment, &page, view] { pressPictures(environment, *view, page); });
}

int run(int count, char** words) {
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
  if (count > 1) showPage(environment, *window, words[1]);
  entry::startAgent(platform::current());
  environment.runLoop().run();
  return 0;
}

}  // namespace
}  // namespace tarni::test

int main(int count, char** words) {
  return tarni::test::run(count, words);
}
