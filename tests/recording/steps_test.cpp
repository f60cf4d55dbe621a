#include <coroutine>
#include <memory>
#include <utility>
#include <vector>

#include "agent/recording/RecorderAction.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/SegmentedControl.h"
#include "backends/headless/views/Switch.h"
#include "backends/headless/views/TableView.h"
#include "backends/headless/views/WebView.h"
#include "tests/recording/Recording.h"

namespace tarni {
namespace {

using headless::build;
using headless::Button;
using headless::View;
using nlohmann::ordered_json;

class Steps : public test::Recording {};

TEST_F(Steps, TapOnAButtonIsToldKeyByKey) {
  const auto box =
      build<View>().frame({{10, 20}, {300.4, 200}}).identifier("box").label("The box").in(*window);
  box->setBounds({{7, -3}, {300.4, 200}});
  build<Button>("Cancel").frame({{0, 0}, {50, 30}}).in(*box);
  const auto button =
      build<Button>("Log in").frame({{10, 100}, {120, 32}}).identifier("login").in(*box);
  build<headless::Label>("part").frame({{0, 0}, {120, 32}}).in(*button);

  ordered_json step = stepOfTap(*button);
  const std::string image = step["arguments"][0]["ObjectImage"];
  EXPECT_EQ(image.substr(0, 4), "/9j/");
  step["arguments"][0]["ObjectImage"] = "image";
  EXPECT_EQ(step.dump(), ordered_json::parse(R"({
    "action": "ClickButton", "popupName": "", "arguments": [
      {"ObjectImage": "image", "className": "UIButton", "id": "login", "label": "",
       "sahiText": "Log in", "name": "Log in", "mode": "native", "index": "1",
       "logicalname": "Log in", "xpath:position": "\\UIView[0]\\UIButton[1]",
       "X": "0", "Y": "0", "height": "32", "width": "120",
       "parent": {"title": "UIView", "classname": "UIView", "id": "box", "label": "The box",
                  "X": "7", "Y": "-3", "width": "300", "height": "200"}},
      {"type": "string", "data": ""}]})")
                             .dump());
}

TEST_F(Steps, ViewListedLastUnderTheFingerIsRecorded) {
  const auto cell = build<View>().frame({{0, 0}, {200, 40}}).in(*window);
  build<headless::Label>("below").frame({{0, 0}, {100, 40}}).in(*cell);
  build<headless::Label>("above").frame({{50, 0}, {100, 40}}).in(*cell);
  walk();
  const auto tapAt = [&](platform::CGPoint point) {
    environment.finger().tap(*cell, point);
    runWorker();
    return objectOf(takeSteps().at(0)).at("sahiText").get<std::string>();
  };
  EXPECT_EQ(tapAt({75, 20}), "above");
  EXPECT_EQ(tapAt({25, 20}), "below");
  // On an edge is not inside.
  EXPECT_EQ(tapAt({50, 20}), "below");
  EXPECT_EQ(tapAt({180, 20}), "");
}

TEST_F(Steps, FirstTapInAWindowBesideTheKeyWindowIsItsOwn) {
  build<Button>("Save").frame({{0, 0}, {50, 30}}).in(*window);
  walk();
  const auto other = std::make_shared<headless::Window>(platform::CGRect{{0, 400}, {390, 100}});
  environment.application().addWindow(other);
  const auto save = build<Button>("Save").frame({{0, 0}, {50, 30}}).in(*other);
  environment.finger().tap(*save);
  runWorker();
  const auto steps = takeSteps();
  ASSERT_EQ(steps.size(), 1U) << "though no walk has seen the window";
  EXPECT_EQ(objectOf(steps[0]).at("index"), "0") << "in its own window";
  EXPECT_EQ(objectOf(steps[0]).at("xpath:position"), "\\UIButton[0]");
  EXPECT_EQ(environment.application().keyWindow(), other);
  environment.application().removeWindow(other);
}

TEST_F(Steps, WhatIsHiddenOrClippedAwayWhenItIsTappedTakesNoTap) {
  const auto pages = build<View>().frame({{0, 0}, {200, 200}}).in(*window);
  build<headless::Label>("shown").frame({{0, 0}, {200, 40}}).in(*pages);
  const auto page = build<View>().frame({{0, 0}, {200, 200}}).hidden().in(*pages);
  build<headless::Label>("of the hidden page").frame({{0, 0}, {200, 40}}).in(*page);
  const auto panel = build<View>().frame({{0, 100}, {200, 50}}).clips().in(*pages);
  build<headless::Label>("clipped away").frame({{0, -100}, {200, 40}}).in(*panel);
  walk();
  environment.finger().tap(*pages, {50, 20});
  page->setHidden(false);  // the tap turned the page
  runWorker();
  EXPECT_EQ(objectOf(takeSteps().at(0)).at("sahiText"), "shown");
}

TEST_F(Steps, SelectedSegmentIsRecordedWithTheTextOfItsControl) {
  const auto control =
      build<headless::SegmentedControl>(std::vector<std::optional<std::string>>{"One", "Two"})
          .frame({{0, 0}, {200, 40}})
          .with(&View::setAccessibilityValue, "which number")
          .in(*window);
  walk();
  environment.finger().tap(*control, {150, 20});
  ASSERT_EQ(control->selectedSegmentIndex(), 1);
  runWorker();
  const ordered_json step = takeSteps().at(0);
  EXPECT_EQ(objectOf(step).at("className"), "UISegment");
  EXPECT_EQ(objectOf(step).at("index"), "1");
  EXPECT_EQ(objectOf(step).at("sahiText"), "which number");
  EXPECT_EQ(objectOf(step).at("name"), "which number");
  environment.finger().tap(*control, {50, 20});
  control->select(-1);
  runWorker();
  EXPECT_TRUE(takeSteps().empty()) << "without a selection there is no step";
}

class BlankWebView : public View {
 public:
  BlankWebView() : View(platform::uikit::UIWebView) {}
  platform::Task<platform::UIImageRef> drawViewHierarchy() override { co_return nullptr; }
};

TEST_F(Steps, TapInsideAWebViewLeavesOnlyThePictureOfTheTouchedArea) {
  const auto web = build<headless::WebView>().frame({{0, 0}, {300, 300}}).in(*window);
  const auto blank = build<BlankWebView>().frame({{0, 300}, {300, 300}}).in(*window);
  walk();
  environment.finger().tap(*web, {50, 50});
  runWorker();
  const auto image = GlobalVars::sharedInstance()._webViewBase64Image();
  ASSERT_TRUE(image);
  EXPECT_EQ(image->substr(0, 27), "data:image/jpeg;base64,/9j/");
  environment.finger().tap(*blank, {50, 50});
  runWorker();
  EXPECT_TRUE(takeSteps().empty());
  EXPECT_FALSE(GlobalVars::sharedInstance()._webViewBase64Image()) << "no older picture either";
}

TEST_F(Steps, ButtonThatClosesItsOwnDialogIsStillRecorded) {
  auto dialog = build<View>().frame({{50, 100}, {200, 200}}).identifier("dialog").in(*window);
  build<Button>("Help").frame({{0, 0}, {100, 40}}).in(*dialog);
  auto button = build<Button>("Close").frame({{0, 50}, {100, 40}}).in(*dialog);
  const std::weak_ptr<Button> watched = button;
  button->onTap([&] {
    dialog->removeFromSuperview();
    dialog.reset();
    button.reset();
  });
  walk();
  environment.finger().tap(*button);
  ASSERT_TRUE(watched.expired());
  runWorker();
  const auto steps = takeSteps();
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_EQ(actionOf(steps[0]), "ClickButton");
  const ordered_json object = objectOf(steps[0]);
  EXPECT_EQ(object.at("sahiText"), "Close");
  EXPECT_EQ(object.at("xpath:position"), "\\UIView[0]\\UIButton[1]");
  EXPECT_EQ(object.at("index"), "1");
  EXPECT_EQ(object.at("parent").at("id"), "dialog");
  EXPECT_EQ(object.at("ObjectImage").get<std::string>().substr(0, 4), "/9j/");
}

// Two rows, each with a button and a switch.
class StepsInRows : public Steps {
 protected:
  StepsInRows() {
    for (const char* text : {"Trees", "Herbs"}) {
      rows.push_back(std::make_shared<headless::TableViewCell>(text));
      buttons.push_back(build<Button>(text).frame({{0, 0}, {40, 40}}).in(*rows.back()));
      switches.push_back(build<headless::Switch>().frame({{100, 0}, {50, 30}}).in(*rows.back()));
    }
    show(0, 1);
  }
  void show(std::size_t first, std::size_t second) {
    table->setItems(2, [this, first, second](long item, const headless::ViewRef&) {
      return rows[item == 0 ? first : second];
    });
  }

  const std::shared_ptr<headless::TableView> table =
      build<headless::TableView>().frame({{0, 0}, {200, 88}}).in(*window);
  std::vector<std::shared_ptr<headless::TableViewCell>> rows;
  std::vector<std::shared_ptr<Button>> buttons;
  std::vector<std::shared_ptr<headless::Switch>> switches;
};

TEST_F(StepsInRows, ThatGotAnotherRowsViewsWithTheTapAreThoseThatWereTapped) {
  buttons[0]->onTap([&] {
    show(1, 0);
    buttons[0]->setTitle("Herbs");
  });
  EXPECT_EQ(objectOf(stepOfTap(*buttons[0])).at("sahiText"), "Trees");
}

TEST_F(StepsInRows, WhoseTextChangesWithTheTapTellWhatCameOfIt) {
  switches[0]->onChange([&] {
    rows[0]->setText("No trees");
    switches[0]->turn(false);
  });
  EXPECT_EQ(actionOf(stepOfTap(*switches[0])), "Mobile_DeSelectSwitch");
}

// A view whose picture comes only when the platform gets round to it.
class SlowlyDrawnView : public View {
 public:
  platform::Task<platform::UIImageRef> drawViewHierarchy() override {
    const Pause pause{waiting_};
    co_await pause;
    co_return co_await View::drawViewHierarchy();
  }
  void drawNow() {
    for (const std::coroutine_handle<> drawing : std::exchange(*waiting_, {})) drawing.resume();
  }
  bool isWaited() const { return !waiting_->empty(); }

 private:
  using Waiting = std::shared_ptr<std::vector<std::coroutine_handle<>>>;
  struct Pause {
    Waiting waiting;
    bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> drawing) const { waiting->push_back(drawing); }
    void await_resume() const {}
  };

  Waiting waiting_ = std::make_shared<std::vector<std::coroutine_handle<>>>();
};

TEST_F(Steps, ViewThatGoesAwayWhileItIsDrawnIsStillRecorded) {
  auto view = build<SlowlyDrawnView>().frame({{0, 0}, {50, 50}}).identifier("slow").in(*window);
  walk();
  environment.finger().tap(*view);
  view->drawNow();
  std::atomic<bool> hasEnded = false;
  std::thread worker([&] {
    RecorderWorker::sharedInstance().run();
    hasEnded = true;
    environment.runLoop().post([] {});
  });
  EXPECT_TRUE(environment.runLoop().runUntil([&] { return view->isWaited(); }, 10));
  view->removeFromSuperview();
  view->drawNow();
  EXPECT_TRUE(environment.runLoop().runUntil([&] { return hasEnded.load(); }, 10));
  worker.join();
  const auto steps = takeSteps();
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_EQ(objectOf(steps[0]).at("id"), "slow");

  window->addSubview(view);
  walk();
  environment.finger().tap(*view);
  view->removeFromSuperview();
  runWorker();
  const auto withoutPicture = takeSteps();
  ASSERT_EQ(withoutPicture.size(), 1U) << "the draft is good before its picture has come";
  EXPECT_EQ(objectOf(withoutPicture[0]).at("ObjectImage"), "");
  view->drawNow();
}

TEST_F(Steps, LabelWithNothingBelowItLooksOverTheWholeWindow) {
  const auto leaf = build<View>().frame({{0, 0}, {100, 100}}).in(*window);
  const auto over = build<headless::Label>("over").frame({{0, 0}, {60, 60}}).in(*window);
  ASSERT_EQ(window->hitTest({50, 50}), leaf);
  EXPECT_EQ(objectOf(stepOfTap(*leaf)).at("sahiText"), "over");
}

}  // namespace
}  // namespace tarni
