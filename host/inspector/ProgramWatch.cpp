#include "host/inspector/ProgramWatch.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

namespace tarni::host {

using std::chrono::milliseconds;

namespace {

constexpr milliseconds kConnectTime{5'000};
// After which a program counts as busy.
constexpr milliseconds kPatience{2'000};
constexpr milliseconds kBetweenPictures{100};
constexpr milliseconds kLongestPauseInVain{2'000};
constexpr milliseconds kBetweenCosts{1'000};
constexpr milliseconds kBetweenPolls{1'000};
// Of a program at rest: it tells nothing, and one that hangs does neither.
constexpr milliseconds kBetweenSignsOfLife{3'000};
// Of the time, what pictures may take.
constexpr int kShareOfPictures = 4;

Clock::time_point now() {
  return Clock::now();
}

milliseconds until(Clock::time_point time) {
  return std::max(std::chrono::ceil<milliseconds>(time - now()), milliseconds(0));
}

}  // namespace

ProgramWatch::ProgramWatch(const std::string& session, Tell tell)
    : client_(session, kConnectTime), tell_(std::move(tell)), info_(ask("app.info")) {}

Json ProgramWatch::ask(const std::string& method, Json parameters) {
  auto answer = client_.call(method, std::move(parameters), kPatience);
  lastAnswer_ = now();
  return answer;
}

void ProgramWatch::watch() {
  if (std::exchange(isWatching_, true)) return;
  try {
    ask("screen.watch");
  } catch (const RequestError& error) {
    if (error.name() == "timeout") {
      isWatching_ = false;
      throw;
    }
    isPolled_ = true;
  }
}

void ProgramWatch::pause() {
  if (!std::exchange(isWatching_, false)) return;
  hasChanged_ = areCostsDue_ = false;
  if (!isPolled_) ask("screen.unwatch");
}

void ProgramWatch::tellEverything() {
  version_ = 0;
  pictures_.clear();
  hasChanged_ = true;
  watch();
  catchUp();
}

void ProgramWatch::record(bool isToRecord) {
  ask(isToRecord ? "record.start" : "record.stop");
}

void ProgramWatch::goOn(milliseconds timeout, std::span<const int> wakeOn) {
  if (isWatching_ && hasChanged_) timeout = std::min(timeout, until(nextPictures_));
  if (isWatching_ && areCostsDue_) timeout = std::min(timeout, until(nextCosts_));
  if (isWatching_ && isPolled_) timeout = std::min(timeout, kBetweenPolls);
  if (isWatching_) timeout = std::min(timeout, until(lastAnswer_ + kBetweenSignsOfLife));
  takeNotifications(timeout, wakeOn);
  if (!isWatching_) return;
  if (hasChanged_) catchUp();
  if (areCostsDue_ && now() >= nextCosts_) tellCosts();
  if (now() >= lastAnswer_ + kBetweenSignsOfLife) ask("app.info");
}

// All that have come: a program that paints without a break is faster than its pictures.
void ProgramWatch::takeNotifications(milliseconds timeout, std::span<const int> wakeOn) {
  auto told = client_.next(timeout, wakeOn);
  if (!told && isPolled_ && isWatching_) {
    hasChanged_ = true;
    for (const auto& [window, hash] : pictures_) painted_.insert(window);
  }
  while (told) {
    take(*told);
    told = client_.next(milliseconds(0));
  }
}

void ProgramWatch::take(const Notification& told) {
  if (told.method == "record.step") return tell_({{"type", "step"}, {"step", told.parameters}}, "");
  hasChanged_ = true;
  for (const auto& window : told.parameters.value("windows", Json::array())) {
    if (window.is_number_integer()) painted_.insert(window.get<long>());
  }
}

// The tree at once, pictures when it is time for them.
void ProgramWatch::catchUp() {
  tellTree();
  if (now() < nextPictures_) return;
  tellPictures();
  hasChanged_ = false;
  areCostsDue_ = true;
}

void ProgramWatch::tellTree() {
  auto parameters = Json::object();
  if (version_ != 0) parameters["since"] = version_;
  auto tree = ask("tree.get", std::move(parameters));
  auto windows = ask("window.list")["windows"];
  std::map<long, std::size_t> shown;
  for (const auto& window : windows) {
    const auto handle = window.value("element", 0L);
    const auto known = pictures_.find(handle);
    if (known == pictures_.end()) painted_.insert(handle);
    shown[handle] = known == pictures_.end() ? 0 : known->second;
  }
  pictures_ = std::move(shown);
  const auto version = tree.value("version", 0L);
  const bool isNews = version != std::exchange(version_, version) || tree.value("whole", false);
  if (!isNews) return;
  tree["type"] = "tree";
  tree["windows"] = std::move(windows);
  tell_(tree, "");
}

// Some programs paint all the time and show nothing new, some because a picture is taken.
void ProgramWatch::tellPictures() {
  const auto begin = now();
  bool isNews = false;
  for (const long window : std::exchange(painted_, {})) {
    if (pictures_.contains(window)) isNews = tellPicture(window) || isNews;
  }
  pauseInVain_ = isNews ? milliseconds(0)
                        : std::clamp(pauseInVain_ * 2, kBetweenPictures, kLongestPauseInVain);
  nextPictures_ = begin + std::max<Clock::duration>(
                              {kBetweenPictures, pauseInVain_, (now() - begin) * kShareOfPictures});
}

// One that looks as before is not told.
bool ProgramWatch::tellPicture(long window) {
  Json picture;
  try {
    picture = ask("window.picture", {{"window", window}});
  } catch (const RequestError& error) {
    if (error.name() == "timeout") painted_.insert(window);
    if (error.name() == "timeout") throw;
    return false;  // it is closed, or nothing of it can be drawn
  }
  const auto hash = std::hash<std::string>()(textIn(picture, "data"));
  if (std::exchange(pictures_[window], hash) == hash) return false;
  picture["type"] = "picture";
  picture["window"] = window;
  tell_(picture, "picture " + std::to_string(window));
  return true;
}

void ProgramWatch::tellCosts() {
  auto costs = ask("app.costs");
  costs["type"] = "costs";
  costs["at"] = std::chrono::duration<double>(now().time_since_epoch()).count();
  tell_(costs, "");
  nextCosts_ = now() + kBetweenCosts;
  areCostsDue_ = false;
}

}  // namespace tarni::host
