// Views that go at any call that the agent makes to them: each command, tap and look is done again
// and again, with the view gone one call later each time, until it is not asked any more. Nothing
// may be thrown, the answer is whole, and what comes next is served as ever.
#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>
#include <utility>

#include "agent/TcpCommunication/BaseManager/RecorderCommands.h"
#include "agent/TcpCommunication/PlaybackExecutor.h"
#include "agent/diagnostics/ViewHierarchy.h"
#include "agent/elements/UIViewMemoryCache.h"
#include "platform/Foundation/NSException.h"
#include "tests/faults/FaultyApplication.h"
#include "tests/faults/Mortal.h"
#include "tests/recording/Recording.h"

namespace tarni::test {
namespace {

using headless::ViewRef;
using nlohmann::ordered_json;

constexpr const char* kElement = "the element";

// What goes, standing in the window.
struct Victim {
  const char* name;
  ViewRef (*show)(Fuse& fuse, headless::Window& window);
};

void PrintTo(const Victim& victim, std::ostream* output) {
  *output << victim.name;
}

template <typename Kind, typename... Arguments>
std::shared_ptr<Kind> showKind(Fuse& fuse, headless::Window& window, Arguments... arguments) {
  return headless::build<Kind>(fuse, arguments...).frame({{10, 10}, {200, 80}}).in(window);
}

constexpr Victim kVictims[] = {
    {"Button",
     [](Fuse& fuse, headless::Window& window) -> ViewRef {
       return showKind<MortalButton>(fuse, window, "Goes");
     }},
    {"Label",
     [](Fuse& fuse, headless::Window& window) -> ViewRef {
       return showKind<MortalLabel>(fuse, window, "Goes");
     }},
    {"Field",
     [](Fuse& fuse, headless::Window& window) -> ViewRef {
       const auto field = showKind<MortalField>(fuse, window, "Goes");
       field->type("typed");
       return field;
     }},
    {"Switch",
     [](Fuse& fuse, headless::Window& window) -> ViewRef {
       return showKind<MortalSwitch>(fuse, window);
     }},
    {"Table",
     [](Fuse& fuse, headless::Window& window) -> ViewRef {
       const auto table = showKind<MortalTable>(fuse, window);
       table->setRows({"one", "two", "three", "four"});
       return table;
     }},
    {"Box",
     [](Fuse& fuse, headless::Window& window) -> ViewRef {
       const auto box = showKind<Mortal<headless::View>>(fuse, window);
       headless::build<headless::Button>("inside").frame({{0, 0}, {200, 80}}).in(*box);
       return box;
     }},
    {"Window",
     [](Fuse&, headless::Window& window) -> ViewRef {
       headless::build<headless::Button>("inside").frame({{0, 0}, {200, 80}}).in(window);
       return window.ref();
     }},
};

// Everything that one command needs, whatever it is.
ordered_json commandNamed(const std::string& name) {
  return {{"functionname", name},
          {"accessorvalue", kElement},
          {"datavalue", name == "swipeon" ? "up" : kElement}};
}

class Vanishing : public Recording, public testing::WithParamInterface<Victim> {
 protected:
  Vanishing() {
    environment.application().removeWindow(window);
    platform::Platform parts = platform::current();
    parts.application = &application_;
    platform::install(parts);
  }
  ~Vanishing() override {
    GlobalVars::sharedInstance().set_isPlaybackStarted(std::nullopt);
    environment.install();
  }

  // Does the deed on the victim again and again, with the view gone one call later each time (or
  // `growth` times later), until it outlives the deed. Each time `isServed` is asked what becomes
  // of the next. The answer is how many calls the deed makes.
  template <typename Deed, typename IsServed>
  long atEveryCall(Deed deed, IsServed isServed, double growth = 1) {
    for (long calls = 1;; calls = std::max(calls + 1, std::lround(calls * growth))) {
      SCOPED_TRACE("gone at call " + std::to_string(calls));
      const ViewRef victim = showVictim();
      deed(victim, calls);
      const bool wasAsked = fuse_.hasBurnt();
      fuse_.putOut();
      leaveIfGone();
      EXPECT_TRUE(isServed());
      closeWindows();
      if (!wasAsked || HasFailure()) return calls - 1;
    }
  }
  void lightFuse(long calls) { fuse_.light(calls); }

  static std::string answer(const ordered_json& command) {
    return complete(PlaybackExecutor::execute(command.dump())).value_or("(no answer)");
  }

  // A button in a window of its own, which comes to the front.
  ViewRef showSurvivor() {
    window = environment.makeWindow();
    return headless::build<headless::Button>("Stays").frame({{10, 200}, {200, 40}}).in(*window);
  }

  const bool isField = std::string(GetParam().name) == "Field";

 private:
  const bool isWindow_ = std::string(GetParam().name) == "Window";

  ViewRef showVictim() {
    fuse_.light(0);
    window = std::make_shared<Mortal<headless::Window>>(isWindow_ ? fuse_ : never_,
                                                        environment.screen().bounds());
    window->makeKeyAndVisible(environment.application());
    const ViewRef victim = GetParam().show(fuse_, *window);
    victim_ = victim;
    return victim;
  }

  void leaveIfGone() {
    const ViewRef victim = fuse_.hasBurnt() ? victim_.lock() : nullptr;
    if (!victim) return;
    victim->removeFromSuperview();
    if (isWindow_) closeWindows();
  }

  void closeWindows() {
    const auto windows = environment.application().windows();
    for (const auto& shown : windows) environment.application().removeWindow(shown);
    window = nullptr;
  }

  Fuse fuse_;
  Fuse never_;
  std::weak_ptr<headless::View> victim_;
  FaultyApplication application_{environment.application(), [this] { leaveIfGone(); }};
};

TEST_P(Vanishing, EveryCommandIsAnsweredAndSoIsTheNext) {
  long calls = 0;
  for (const char* const name :
       {"findelements", "findelementsinsideelement", "findeditablecomponents", "clickelement",
        "sendkeysonelement", "swipeto", "swipereset", "swipeon", "isselected", "isenabled",
        "isdisplayed", "gettext", "getheight", "getwidth", "ai_findelements",
        "ai_getscreensnapshot", "highlight"}) {
    SCOPED_TRACE(name);
    const auto play = [&](ViewRef victim, long last) {
      UIViewMemoryCache::sharedInstance().addViewInMemoryCache(std::move(victim), kElement);
      lightFuse(last);
      const std::string text = answer(commandNamed(name));
      EXPECT_TRUE(ordered_json::parse(text, nullptr, false).is_array()) << text;
    };
    const auto nextIsFound = [&] {
      showSurvivor();
      const ordered_json find{{"functionname", "findelements"},
                              {"tagname", "UIButton"},
                              {"accessortype", "text"},
                              {"accessorvalue", "Stays"}};
      return ordered_json::parse(answer(find)).size() == 1;
    };
    calls += atEveryCall(play, nextIsFound);
  }
  RecordProperty("calls", std::to_string(calls));
  EXPECT_GT(calls, 50);
}

TEST_P(Vanishing, ATapIsSurvivedAndTheNextIsRecorded) {
  const auto tapAndRecord = [&](ViewRef victim, long last) {
    walk();
    lightFuse(last);
    environment.finger().tap(*std::exchange(victim, nullptr));
    runWorker();
    if (window) walk();
    takeSteps();
  };
  const auto nextIsRecorded = [&] {
    const ViewRef survivor = showSurvivor();
    walk();
    environment.finger().tap(*survivor);
    runWorker();
    const auto steps = takeSteps();
    return !steps.empty() && objectOf(steps.back()).at("sahiText") == "Stays";
  };
  // The worker pauses for half a second after text, so that a field takes its time.
  EXPECT_GT(atEveryCall(tapAndRecord, nextIsRecorded, isField ? 1.7 : 1), 5);
}

TEST_P(Vanishing, ASpiedElementIsHighlightedOrNot) {
  GlobalVars::sharedInstance().set_spyMode("true");
  const auto spyAndHighlight = [&](ViewRef victim, long last) {
    walk();
    lightFuse(last);
    environment.finger().tap(*std::exchange(victim, nullptr));
    try {
      complete(RecorderCommands::handle("highlight=0"));
    } catch (const platform::NSException&) {
      // Nothing was spied.
    }
    if (window) Diagnostics::viewHierarchyText(window);
    RecorderQueue::get().clearRecorderQueue();
  };
  const auto nextIsSpied = [&] {
    const ViewRef survivor = showSurvivor();
    walk();
    environment.finger().tap(*survivor);
    const auto spied = RecorderQueue::get().dequeue();
    return spied && spied->size() == 1;
  };
  EXPECT_GT(atEveryCall(spyAndHighlight, nextIsSpied), 5);
}

INSTANTIATE_TEST_SUITE_P(Of, Vanishing, testing::ValuesIn(kVictims),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace tarni::test
