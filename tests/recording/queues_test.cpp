#include <gmock/gmock.h>

#include "agent/recording/RecorderEvent.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/TextField.h"
#include "tests/recording/Recording.h"

namespace tarni {
namespace {

using headless::build;
using headless::Button;
using testing::ElementsAre;
using testing::IsEmpty;

class Bucket : public test::Recording {
 protected:
  std::shared_ptr<Button> button(const std::string& title, double y) {
    return build<Button>(title).frame({{0, y}, {100, 40}}).in(*window);
  }
};

TEST_F(Bucket, WorkerEndsWhenTheEventLoopIsGone) {
  const auto ok = button("OK", 0);
  walk();
  environment.finger().tap(*ok);
  environment.runLoop().close();
  bool goesOn = true;
  std::thread([&] { goesOn = RecorderWorker::sharedInstance().run(); }).join();
  EXPECT_FALSE(goesOn);
}

class TypedText : public test::Recording {
 protected:
  std::shared_ptr<headless::TextField> field(const std::string& placeholder, double y) {
    return build<headless::TextField>(placeholder).frame({{0, y}, {100, 30}}).in(*window);
  }
  std::shared_ptr<headless::TextField> a = field("A", 0);
  std::shared_ptr<headless::TextField> b = field("B", 40);
  std::shared_ptr<Button> done = build<Button>("Done").frame({{0, 80}, {100, 30}}).in(*window);
};

TEST_F(TypedText, NextTextFieldRecordsTheTextOfTheOneBefore) {
  walk();
  environment.finger().tap(*a);
  runWorker();
  EXPECT_EQ(actionOf(takeSteps().at(0)), "Click");
  a->type("abc");
  walk();
  environment.finger().tap(*b);
  const auto atOnce = takeSteps();
  ASSERT_EQ(atOnce.size(), 1U);
  EXPECT_EQ(actionOf(atOnce[0]), "TypeTextOnEditBox");
  EXPECT_EQ(dataOf(atOnce[0]), "abc");
  EXPECT_EQ(objectOf(atOnce[0]).at("sahiText"), "A");
  EXPECT_EQ(GlobalVars::sharedInstance()._editAbleElement(), b);
  runWorker();
  const auto later = takeSteps();
  ASSERT_EQ(later.size(), 1U);
  EXPECT_EQ(actionOf(later[0]), "Click");
  EXPECT_EQ(objectOf(later[0]).at("sahiText"), "B");
}

TEST_F(TypedText, IsFlushedBeforeTheNextTapElsewhereAndByNothingElse) {
  walk();
  environment.finger().tap(*a);
  a->type("abc");
  walk();
  environment.finger().tap(*a);
  EXPECT_TRUE(takeSteps().empty()) << "it is the same field";
  ElementsQueue::sharedInstance().clearBucket();
  runWorker();
  EXPECT_TRUE(takeSteps().empty()) << "there is nothing in the bucket";
  environment.finger().tap(*done);
  EXPECT_TRUE(takeSteps().empty());
  runWorker();
  const auto steps = takeSteps();
  ASSERT_EQ(steps.size(), 2U);
  EXPECT_EQ(actionOf(steps[0]), "TypeTextOnEditBox");
  EXPECT_EQ(dataOf(steps[0]), "abc");
  EXPECT_EQ(actionOf(steps[1]), "ClickButton");
  EXPECT_FALSE(GlobalVars::sharedInstance()._editAbleElement());
}

TEST_F(TypedText, IsTakenOnceFromWhereATapFindsItAndNotWhereItWasLeft) {
  auto& typed = tarni::TypedText::sharedInstance();
  a->focus();
  walk();
  a->type("abc");
  walk();
  b->focus();
  walk();
  environment.finger().tap(*done);
  EXPECT_THAT(typed.takeAll(), IsEmpty()) << "a still stands, b is empty";
  ElementsQueue::sharedInstance().clearBucket();
  b->type("x");
  walk();
  environment.finger().tap(*done);
  EXPECT_EQ(typed.takeAll().size(), 1U);
  EXPECT_THAT(typed.takeAll(), IsEmpty());
}

// A dialog with a text field, which has the focus while the dialog is there.
class TextInADialog : public TypedText {
 protected:
  void open(const std::string& text) {
    dialog = build<headless::View>().frame({{0, 120}, {200, 200}}).in(*window);
    name = build<headless::TextField>("Name").frame({{0, 0}, {100, 30}}).in(*dialog);
    ok = build<Button>("OK").frame({{0, 50}, {100, 40}}).in(*dialog);
    name->replaceText(text);
    name->focus();
  }
  void close() {
    dialog->removeFromSuperview();
    dialog.reset();
    name.reset();
    ok.reset();
  }
  // The application is shown a key before it handles it.
  static void showKey() {
    posix::EventRecord key(platform::UIEventType::Presses);
    RecorderEvent().handleEvent(key);
  }
  // "action data" of each step that the worker makes.
  std::vector<std::string> steps() {
    runWorker();
    std::vector<std::string> all;
    for (const auto& step : takeSteps()) all.push_back(actionOf(step) + " " + dataOf(step));
    return all;
  }

  headless::ViewRef dialog;
  std::shared_ptr<headless::TextField> name;
  std::shared_ptr<Button> ok;
};

TEST_F(TextInADialog, ClosedWithTheKeyboardIsRecordedWithTheNextTap) {
  open("");
  walk();
  name->type("Ada");
  showKey();
  close();
  walk();
  EXPECT_THAT(steps(), IsEmpty()) << "no tap has come";
  environment.finger().tap(*done);
  EXPECT_THAT(steps(), ElementsAre("TypeTextOnEditBox Ada", "ClickButton "));
  environment.finger().tap(*done);
  EXPECT_THAT(steps(), ElementsAre("ClickButton ")) << "once is enough";
  open("Untitled");
  walk();
  showKey();
  close();
  walk();
  environment.finger().tap(*done);
  EXPECT_THAT(steps(), ElementsAre("TypeTextOnEditBox Untitled", "ClickButton "))
      << "had the focus";
  open("Untitled");
  walk();
  close();
  a->focus();
  walk();
  environment.finger().tap(*done);
  EXPECT_THAT(steps(), ElementsAre("ClickButton ")) << "another field has it since";
  open("Untitled");
  walk();
  done->onTap([this] { close(); });
  environment.finger().tap(*done);
  EXPECT_THAT(steps(), ElementsAre("TypeTextOnEditBox Untitled", "ClickButton "));
}

TEST_F(TextInADialog, ClosedWithTheKeyboardIsRecordedThoughTheNextTapIsOnAField) {
  open("Unt");
  walk();
  name->type("itled");
  walk();
  // The dialog is kept for the next time, without its text.
  dialog->removeFromSuperview();
  name->replaceText("");
  a->focus();
  walk();
  environment.finger().tap(*b);
  const auto atOnce = takeSteps();
  ASSERT_EQ(atOnce.size(), 1U);
  EXPECT_EQ(dataOf(atOnce[0]), "Untitled");
  EXPECT_EQ(objectOf(atOnce[0]).at("sahiText"), "Name");
  EXPECT_EQ(objectOf(atOnce[0]).at("ObjectImage").get<std::string>().substr(0, 4), "/9j/");
}

TEST_F(TextInADialog, IsNotTypedBeforeTheTapThatOpenedTheDialog) {
  done->onTap([this] { open("Untitled"); });
  walk();
  environment.finger().tap(*done);
  walk();
  EXPECT_THAT(steps(), ElementsAre("ClickButton "));
  ok->onTap([this] { dialog->removeFromSuperview(); });
  environment.finger().tap(*ok);
  EXPECT_THAT(steps(), ElementsAre("TypeTextOnEditBox Untitled", "ClickButton "));
}

TEST_F(TextInADialog, ClosedWithTheKeyboardAllDayDoesNotFillTheMemory) {
  for (int day = 0; day < 70; ++day) {
    open("");
    walk();
    name->type(std::to_string(day));
    showKey();
    close();
    walk();
  }
  const auto kept = tarni::TypedText::sharedInstance().takeAll();
  ASSERT_EQ(kept.size(), 64U);
  EXPECT_EQ(kept.back()->data, "69");
}

}  // namespace
}  // namespace tarni
