#include "host/stream/StreamStepPlayer.h"

#include <algorithm>
#include <array>
#include <thread>
#include <utility>

#include "host/stream/Typing.h"
#include "host/wire/WireError.h"

namespace tarni::host {

using Kind = StreamStep::Kind;
using Result = PlayedStreamStep::Result;

namespace {

constexpr milliseconds kPauseBetweenLooks{150};
// How long only what is certain is taken: a screen that is still being built would be misread.
constexpr milliseconds kTimeToBeCertain{2000};
// A page takes a click once it has answered; the agent itself waits as long after a native one.
constexpr milliseconds kTimeOfPage{500};

milliseconds timeToBeCertain(milliseconds patience) {
  return std::min(kTimeToBeCertain, patience / 2);
}

// What is not a control lets a tap through to what stands behind it. A class of the application's
// own may be one.
bool mayBeTappedThrough(const StreamStep& step) {
  constexpr std::array kPlain{"UIView", "UILabel", "UIWindow"};
  return step.action == "ClickImage" ||
         (step.action == "Click" && std::ranges::find(kPlain, step.className) != kPlain.end());
}

std::string inSeconds(milliseconds time) {
  auto text = std::to_string(std::chrono::duration<double>(time).count());
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text + " s";
}

}  // namespace

StreamStepPlayer::StreamStepPlayer(PlaybackClient& client, Manner manner)
    : client_(client), search_(client), manner_(manner) {}

PlayedStreamStep StreamStepPlayer::play(const StreamStep& step) {
  PlayedStreamStep played{step};
  const auto start = Clock::now();
  try {
    played.result = Result::Failed;
    if (awaitElement(played)) {
      played.before = picture();
      act(played, played.located->element);
      played.after = picture();
    }
  } catch (const AgentException& error) {
    played.message = std::string("the agent reports: ") + error.what();
  } catch (const WireError& error) {
    played.result = Result::Lost;
    played.message = error.what();
  }
  played.seconds = secondsSince(start);
  return played;
}

bool StreamStepPlayer::comesTooEarly(const StreamStep& step, const StreamStep& next) {
  if (step.kind != Kind::Type || next.kind == Kind::Type) return false;
  const auto certainUntil = Clock::now() + timeToBeCertain(manner_.patience);
  while (!isReady(step)) {
    if (Clock::now() >= certainUntil) {
      return !isReady(step, manner_.guesses) && isReady(next);
    }
    std::this_thread::sleep_for(kPauseBetweenLooks);
  }
  return false;
}

bool StreamStepPlayer::isReady(const StreamStep& step, bool mayGuess) {
  const auto located = search_.look(step, mayGuess).located;
  return located && located->element.isEnabled && located->element.isTappable;
}

bool StreamStepPlayer::awaitElement(PlayedStreamStep& played) {
  const auto start = Clock::now();
  const auto certainUntil = start + timeToBeCertain(manner_.patience);
  while (true) {
    const auto now = Clock::now();
    const bool isLate = now >= certainUntil;
    auto look = search_.look(played.step, isLate && manner_.guesses);
    played.located = look.located;
    if (played.located) {
      const auto& element = played.located->element;
      if (element.isEnabled && element.isTappable) return true;
      if (isLate && mayBeTappedThrough(played.step)) return true;
    }
    if (now >= start + manner_.patience) {
      explain(played, std::move(look));
      return false;
    }
    std::this_thread::sleep_for(kPauseBetweenLooks);
  }
}

void StreamStepPlayer::act(PlayedStreamStep& played, const ElementOnScreen& element) {
  played.result = Result::Passed;
  switch (played.step.kind) {
    case Kind::Click:
      send(played, "clickelement", element.id);
      break;
    case Kind::Type:
      type(played, element.id);
      break;
    case Kind::SwitchOn:
    case Kind::SwitchOff:
      setSwitch(played, element.id);
      break;
  }
}

void StreamStepPlayer::type(PlayedStreamStep& played, const std::string& id) {
  const Typing typing(client_, id);
  send(played, "sendkeysonelement", id, played.step.data);
  const auto [isFailure, message] = typing.outcome(played.step.data);
  if (isFailure) played.result = Result::Failed;
  played.message = message;
}

void StreamStepPlayer::setSwitch(PlayedStreamStep& played, const std::string& id) {
  const std::string wanted = played.step.kind == Kind::SwitchOn ? "true" : "false";
  const auto before = state(played.step, id);
  if (!before) {
    played.result = Result::Failed;
    played.message = "it is no switch: it has no state";
    return;
  }
  if (*before == wanted) {
    played.message = wanted == "true" ? "was on already" : "was off already";
    return;
  }
  send(played, "clickelement", id);
  const auto after = awaitState(played.step, id, wanted);
  if (!after) {
    played.message = "gone since";
  } else if (*after != wanted) {
    played.result = Result::Failed;
    played.message = std::string("it was tapped and is still ") + (wanted == "true" ? "off" : "on");
  }
}

void StreamStepPlayer::send(PlayedStreamStep& played, const char* function, const std::string& id,
                            const std::string& data) {
  played.hasActed = true;
  client_.call({function, "", "", id, data});
  if (played.step.isInPage) std::this_thread::sleep_for(kTimeOfPage);
}

// A box in a page tells its state as its text.
std::optional<std::string> StreamStepPlayer::awaitState(const StreamStep& step,
                                                        const std::string& id,
                                                        const std::string& wanted) {
  if (!step.isInPage) return awaitAnswer(client_, "isselected", id, wanted);
  awaitAnswer(client_, "gettext", id, wanted == "true" ? "1" : "0");
  return state(step, id);
}

std::optional<std::string> StreamStepPlayer::state(const StreamStep& step, const std::string& id) {
  if (!step.isInPage) return answer("isselected", id);
  const auto text = answer("gettext", id);
  if (text != "1" && text != "0") return std::nullopt;
  return text == "1" ? "true" : "false";
}

std::optional<std::string> StreamStepPlayer::answer(const char* function, const std::string& id) {
  return client_.call({function, "", "", id}).output();
}

std::string StreamStepPlayer::picture() {
  if (!manner_.takesPictures) return "";
  return client_.call({"ai_getscreensnapshot"}).output().value_or("");
}

void StreamStepPlayer::explain(PlayedStreamStep& played, Look look) {
  if (played.located) {
    played.message = std::string("found by ") + nameOf(played.located->by) +
                     ", but not to be tapped within " + inSeconds(manner_.patience) + ": it is " +
                     played.located->element.description();
  } else {
    played.message = "not found within " + inSeconds(manner_.patience) + ": " + look.whyNot;
  }
  played.before = picture();
  played.sameClass = std::move(look.sameClass);
}

}  // namespace tarni::host
