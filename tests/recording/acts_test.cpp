// From what a person's hands do to acts: one act is one step, with what came of it.
#include <cmath>
#include <map>

#include "agent/acts/Acts.h"
#include "agent/session/recording/Steps.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/TextField.h"
#include "backends/headless/views/WebView.h"
#include "platform/Platform.h"
#include "tests/support/Screen.h"

namespace tarni::test {
namespace {

using headless::build;
using platform::InputEvent;
using platform::InputKind;
using Words = std::vector<std::string>;

class ActsTest : public Screen {
 protected:
  ActsTest() { acts_.start(); }
  ~ActsTest() override { acts_.stop(); }

  headless::Application& application() { return environment.application(); }

  void key(std::string_view name, headless::TextField& field, unsigned modifiers = 0) {
    InputEvent event{InputKind::KeyDown};
    event.time = ++time_;
    event.window = window;
    event.view = field.shared_from_this();
    event.key = name;
    event.takesText = true;
    event.modifiers = modifiers;
    if (name.size() == 1) event.text = name;
    application().showInput(event);
    if (name.size() == 1 && modifiers == 0) field.type(name);
  }
  // "click Press", "type Name = Ada" for each that was told so far.
  Words told() {
    acts_.finish();
    Words words;
    for (const auto& [order, act] : told_) {
      std::string word = std::string(act.kind) + " " + act.element->text + act.key;
      if (act.kind == acts::kType) word += " = " + (act.isSecret ? "(secret)" : act.text);
      if (act.kind == acts::kWheel) word += " by " + std::to_string(std::lround(act.notches.y));
      if (act.value) word += ", " + *act.value;
      words.push_back(word);
    }
    return words;
  }

  double time_ = 0;
  std::map<long, Act> told_;
  Acts acts_{[](const platform::UIViewRef& view, const auto&) {
               return std::make_shared<const PortraitText>(PortraitText{
                   view->accessibilityIdentifier().value_or(view->getClass()->name())});
             },
             [this](const Act& act) { told_[act.order] = act; }};
};

TEST_F(ActsTest, ATextIsOneStepAndASecretLeavesNothingOfItself) {
  const auto name =
      build<headless::TextField>().identifier("name").frame({{0, 0}, {100, 40}}).in(*window);
  const auto secret =
      build<headless::TextField>().identifier("pass").frame({{0, 50}, {100, 40}}).in(*window);
  secret->setSecure(true);
  environment.finger().tap(*name);
  for (const char* const typed : {"A", "d", "x", "Backspace", "a"}) key(typed, *name);
  name->replaceText("Ada");
  key("Tab", *name);
  for (const char* const typed : {"s", "e", "s"}) key(typed, *secret);
  key("s", *secret, platform::kControl);
  EXPECT_THAT(told(), testing::ElementsAre("click name", "type name = Ada, Ada", "key nameTab",
                                           "type pass = (secret)", "key passControl+s"));
}

// A page that is busy took keys for shortcuts, passwords among them, and for those of what had the
// focus when it got to them.
TEST_F(ActsTest, WhatIsTypedIntoABusyPageIsWhatThePageSaysOfItLater) {
  const auto page =
      build<headless::WebView>().identifier("page").frame({{0, 0}, {100, 90}}).in(*window);
  environment.finger().tap(*page);
  const auto typed = [&](const char* keys, std::optional<PortraitText::InPage> said,
                         std::optional<PortraitText::InPage> pressed = {}) {
    Act click;
    for (const char* letter = keys; *letter; ++letter) {
      InputEvent event{InputKind::KeyDown};
      event.window = window;
      event.view = page;
      event.key = event.text = std::string_view(letter, 1);
      application().showInput(event);
    }
    acts_.finish();
    Act act = told_.rbegin()->second;
    click.order = act.order - 1;
    click.element = std::make_shared<PortraitText>(PortraitText{"pressed", pressed});
    act.element = std::make_shared<PortraitText>(PortraitText{"focused", said});
    session::settleText(act, click);
    acts_.stop();
    acts_.start();
    return std::string(act.kind) + " " + act.element->text + " " + act.key + act.text +
           (act.isSecret ? "secret" : "");
  };
  using InPage = PortraitText::InPage;
  EXPECT_EQ(typed("Ada", InPage{{}, true}), "type focused Ada");
  EXPECT_EQ(typed("Ada", InPage{{}, false}, InPage{{}, true}), "type pressed Ada");
  EXPECT_EQ(typed("s3", InPage{{}, true, true}), "type focused secret");
  EXPECT_EQ(typed("s3", InPage{{}, true}, InPage{{}, true, true}), "type pressed secret");
  EXPECT_EQ(typed("s3", std::nullopt), "type focused secret");
  EXPECT_EQ(typed("j", InPage{}), "key focused j");
  EXPECT_EQ(typed("j", InPage{}, InPage{}), "key focused j");
  EXPECT_EQ(typed("jk", InPage{}), "type focused jk");
}

TEST_F(ActsTest, TheCheckKeyChecksWhatThePointerRestsOnAndIsNoKey) {
  build<headless::Button>("Saved").identifier("saved").frame({{0, 50}, {100, 40}}).in(*window);
  const auto name =
      build<headless::TextField>().identifier("name").frame({{0, 0}, {100, 40}}).in(*window);
  acts_.setCheckKey("Control+F12");
  InputEvent event{InputKind::KeyDown};
  event.window = window;
  event.view = name;
  event.key = "F12";
  event.point = {10, 60};
  application().showInput(event);
  event.modifiers = platform::kControl;
  application().showInput(event);
  EXPECT_THAT(told(), testing::ElementsAre("key nameF12", "check saved"));
}

// The list that it turns moves what is below the pointer.
TEST_F(ActsTest, TurnsOfTheWheelOneWayAreOneStepWhateverComesBelowThePointer) {
  const auto row = build<headless::Button>("1").identifier("1").in(*window);
  const auto next = build<headless::Button>("2").identifier("2").in(*window);
  for (const int turn : {1, 2, 3, 4, 5}) {
    InputEvent event{InputKind::Wheel, 100 + turn * 0.05};
    event.window = window;
    event.view = turn % 2 ? row : next;
    event.notches = {0, turn < 4 ? 1.0 : -1.0};
    application().showInput(event);
  }
  EXPECT_THAT(told(), testing::ElementsAre("wheel 1 by 3", "wheel 2 by -2"));
}

}  // namespace
}  // namespace tarni::test
