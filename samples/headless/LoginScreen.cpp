#include "samples/headless/LoginScreen.h"

#include <string>
#include <vector>

#include "backends/headless/Build.h"
#include "backends/headless/views/Bars.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Dialog.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/Switch.h"
#include "backends/headless/views/TableView.h"
#include "backends/headless/views/TextField.h"
#include "backends/headless/views/ViewController.h"

namespace tarni::samples {

using headless::build;
using headless::Button;
using headless::Dialog;
using headless::Label;
using headless::NavigationBar;
using headless::Switch;
using headless::TableView;
using headless::TextField;
using headless::View;
using headless::ViewController;
using headless::Window;

namespace {

constexpr int kRowCount = 20;
constexpr double kLeft = 20;    // points
constexpr double kWidth = 350;  // points

platform::CGRect line(double top, double height = 44) {
  return {{kLeft, top}, {kWidth, height}};
}

std::vector<std::string> rowTexts() {
  std::vector<std::string> texts;
  for (int row = 1; row <= kRowCount; ++row) texts.push_back("Row " + std::to_string(row));
  return texts;
}

std::shared_ptr<Button> addButton(View& page, const char* title, const char* identifier,
                                  double top) {
  return build<Button>(title)
      .frame(line(top))
      .identifier(identifier)
      .background(headless::colors::kBlue)
      .with([](Button& button) {
        button.layer().setCornerRadius(10);
        button.setTitleStyle({.bold = true,
                              .color = headless::colors::kWhite,
                              .alignment = headless::TextAlignment::Center});
      })
      .in(page);
}

void askForDetails(const std::weak_ptr<Window>& window, Label& status, headless::RunLoop& runLoop) {
  const auto shown = window.lock();
  if (!shown) return;
  const auto question =
      std::make_shared<Dialog>("Really?", std::vector<std::string>{"OK", "Cancel"});
  status.setText(question->runModal(*shown, runLoop) == 0 ? "Accepted" : "Rejected");
}

}  // namespace

headless::WindowRef buildLoginScreen(headless::Environment& environment) {
  headless::WindowRef window = environment.makeWindow();
  const auto page =
      build<View>().identifier("page").background(headless::colors::kBackground).get();
  const auto bar = build<NavigationBar>("Tarni Sample").frame({{0, 44}, {390, 44}}).in(*page);
  const auto welcome = build<Label>("Welcome").frame(line(104)).identifier("welcome").in(*page);
  welcome->setTextStyle({.size = 28, .bold = true});
  const auto username =
      build<TextField>("User name").frame(line(156)).identifier("username").in(*page);
  build<TextField>("Password")
      .frame(line(208))
      .identifier("password")
      .with(&TextField::setSecure, true)
      .in(*page);
  build<Label>("Remember me").frame(line(260, 31)).in(*page);
  build<Switch>().frame({{kLeft + kWidth - 51, 260}, {51, 31}}).identifier("remember").in(*page);
  const auto list = build<TableView>().frame(line(307, 308)).identifier("list").in(*page);
  list->layer().setCornerRadius(10);
  list->setRows(rowTexts());
  const auto login = addButton(*page, "Log in", "login", 631);
  const auto details = addButton(*page, "Details…", "details", 687);
  const auto status = build<Label>("").frame(line(743)).identifier("status").in(*page);

  list->onSelect([status = status.get()](long row) { status->setText(rowTexts().at(row)); });
  login->onTap([welcome = welcome.get(), username = username.get()] {
    welcome->setText("Hello, " + username->text());
  });
  details->setOpensNestedLoop(true);
  details->onTap([window = std::weak_ptr(window), status = status.get(),
                  &runLoop = environment.runLoop()] { askForDetails(window, *status, runLoop); });
  window->setRootViewController(std::make_shared<ViewController>(page));
  return window;
}

}  // namespace tarni::samples
