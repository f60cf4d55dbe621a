#include "host/player/Player.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <thread>

#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/player/Acting.h"
#include "host/player/Acts.h"
#include "host/player/Pictures.h"
#include "host/wire/WireError.h"

namespace tarni::host {

using Result = Played::Result;

namespace {

// By which every system takes two presses at one place for two clicks, and what a click has set in
// motion has mostly come to an end.
constexpr std::chrono::milliseconds kTwoClicks{500};

bool isPressAtSamePlace(const Step& step, const Step& before) {
  const auto isPress = [](const Step& one) { return one.json().contains("button"); };
  if (!isPress(step) || !isPress(before)) return false;
  const auto ways = locatorsIn(step.element());
  const auto others = locatorsIn(before.element());
  return !ways.empty() && !others.empty() && ways.front() == others.front();
}

// Of the menu that the step before has opened by the second button.
bool isOfContextMenu(const Step& step, const Step& before) {
  const bool isEntry = step.act() == "menu" || step.act() == "hover";
  return isEntry && before.act() == "click" && textIn(before.json(), "button") == "right";
}

// What may be otherwise in a moment; these are told before anything is done to the program.
bool mayPass(const RequestError& error) {
  constexpr std::array<std::string_view, 5> kNames{"no such element", "stale element reference",
                                                   "element not interactable",
                                                   "element click intercepted", "no such window"};
  return std::ranges::find(kNames, error.name()) != kNames.end();
}

// What stands before the window that the step was recorded in, for a person; "" for nothing.
std::string inFrontOf(SessionClient& client, const Step& step) {
  const auto recorded = textIn(objectIn(step.element(), "near"), "window");
  if (recorded.empty()) return "";
  try {
    for (const Json& window : client.call("window.list").value("windows", std::vector<Json>())) {
      const auto title = textIn(window, "title");
      if (!window.value("key", false) || title == recorded) continue;
      return "; in front stands " + windowInWords(window);
    }
  } catch (const std::runtime_error&) {
    // It has been said why the step failed.
  }
  return "";
}

}  // namespace

// The pictures of one step.
class Player::Show {
 public:
  Show(SessionClient& client, Played& played) : client_(client), played_(played) {}

  void before() { played_.before = picture(); }
  void after() {
    comesToRest(client_);
    played_.after = picture();
  }

 private:
  Picture picture() {
    return pictureOfWindow(client_, played_.element.value("element", Json(nullptr)));
  }

  SessionClient& client_;
  Played& played_;
};

Played Player::play(const Step& step) {
  Played played;
  const auto start = Clock::now();
  Show show(client_, played);
  Acting acting(client_, finder_, step, manner_.secrets, start + manner_.patience, played);
  if (manner_.takesPictures) acting.beforeActing([&show] { show.before(); });
  try {
    played.result = Result::Failed;
    tryOften(acting, start + manner_.patience);
    played.result = Result::Passed;
    played.seconds = secondsSince(start);
    if (manner_.takesPictures) show.after();
  } catch (const StepFailure& failure) {
    played.message = failure.what() + inFrontOf(client_, step);
    played.isMissing = failure.candidates().has_value();
    played.candidates = failure.candidates().value_or(std::vector<Candidate>());
    if (manner_.takesPictures && played.before.data.empty()) show.before();
  } catch (const RequestError& error) {
    played.message = std::string("the program answers: ") + error.what();
  } catch (const WireError& error) {
    // What was there with the last picture only may have ended the program.
    const bool isOver = acting.hasActed() || played.result == Result::Passed;
    played.result = Result::Lost;
    played.hasActed = isOver;
    played.message = error.what();
  }
  if (played.seconds == 0) played.seconds = secondsSince(start);
  return played;
}

void Player::tryOften(Acting& acting, Deadline deadline) {
  while (true) {
    try {
      return carryOut(acting);
    } catch (const RequestError& error) {
      if (!mayPass(error) || acting.hasActed() || Clock::now() >= deadline) throw;
    }
    acting.startAgain();
    acting.awaitChange();
  }
}

// A program that is still at work may turn to another window, which closes the menu.
Played Player::playInMenuOf(const Step& before, const Step& step, Played missed) {
  if (play(before).hasFailed()) return missed;
  Played again = play(step);
  if (again.hasFailed()) return missed;
  addWord(again.message, "its menu had closed and was opened once more", "; ");
  return again;
}

std::vector<Played> Player::play(const Session& session, const Course& course,
                                 PlayObserver& observer) {
  const auto& steps = session.steps();
  const auto start = Clock::now();
  const auto last = std::min(course.until, steps.size());
  auto hasPressed = start - kTwoClicks;
  std::vector<Played> all(steps.size());
  for (std::size_t i = 0; i < all.size(); ++i) all[i].number = i + 1;
  for (std::size_t number = std::max<std::size_t>(course.from, 1); number <= last; ++number) {
    if (observer.wantsEnd()) break;
    const Step& step = steps[number - 1];
    Played& played = all[number - 1];
    observer.willPlay(number, step);
    if (number > 1 && isPressAtSamePlace(step, steps[number - 2])) {
      std::this_thread::sleep_until(hasPressed + kTwoClicks);
    }
    const double began = secondsSince(start);
    played = play(step);
    if (played.isMissing && number > 1 && isOfContextMenu(step, steps[number - 2])) {
      played = playInMenuOf(steps[number - 2], step, std::move(played));
    }
    hasPressed = Clock::now();
    played.number = number;
    played.began = began;
    const bool mayHaveEnded = number == last && played.result == Result::Lost && played.hasActed;
    if (mayHaveEnded && observer.hasProgramEnded()) {
      played.result = Result::Passed;
      played.message = "the program ended";
    }
    observer.hasPlayed(step, played);
    const bool isOver = played.result == Result::Lost || (played.hasFailed() && !course.keepsGoing);
    if (isOver) break;
    if (course.pause.count() > 0) std::this_thread::sleep_for(course.pause);
  }
  return all;
}

}  // namespace tarni::host
