#include "host/player/PlayReport.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <string_view>

#include "PageParts.h"
#include "host/guard/Printable.h"
#include "host/session/Step.h"

namespace tarni::host {

namespace {

// The pictures of a page, each once: that before a step is often that after the last.
class Pictures {
 public:
  explicit Pictures(const PlayReport::Address& addressOf) : addressOf_(addressOf) {}

  // Null for none.
  Json placeOf(const Picture& picture) {
    if (picture.data.empty()) return nullptr;
    const auto [known, isNew] = places_.try_emplace(picture.data, addresses_.size());
    if (isNew) addresses_.push_back(addressOf_(picture));
    return {{"index", known->second}, {"scale", picture.scale}};
  }
  const Json& addresses() const { return addresses_; }

 private:
  const PlayReport::Address& addressOf_;
  std::map<std::string_view, std::size_t> places_;
  Json addresses_ = Json::array();
};

Json waysOf(const Json& element) {
  Json ways = Json::array();
  const auto locators = element.find("locators");
  if (locators == element.end() || !locators->is_array()) return ways;
  for (const Json& locator : *locators) {
    const Json& find = objectIn(locator, "find");
    if (find.empty()) continue;
    Json way = {{"words", locatorInWords(find)}};
    if (locator.contains("matches")) way["matches"] = locator["matches"];
    ways.push_back(std::move(way));
  }
  return ways;
}

// Where the pointer went, in points of the window of the element as it was found.
Json wayOf(const Json& act, const Json& rect) {
  Json way = Json::array();
  const Json& at = objectIn(act, "at");
  if (rect.empty() || at.empty()) return way;
  const double x = numberIn(rect, "x") + numberIn(at, "x");
  const double y = numberIn(rect, "y") + numberIn(at, "y");
  way.push_back({{"x", x}, {"y", y}});
  for (const Json& point : act.value("way", Json::array())) {
    way.push_back({{"x", x + numberIn(point, "x")}, {"y", y + numberIn(point, "y")}});
  }
  return way;
}

Json candidatesOf(const Played& played) {
  Json candidates = Json::array();
  for (const auto& [description, whyNot] : played.candidates) {
    candidates.push_back({{"words", elementInWords(description)}, {"whyNot", whyNot}});
  }
  return candidates;
}

Json stepOf(const PlayReport::Shown& step, Pictures& pictures) {
  const Played& played = *step.played;
  const Json& rect = objectIn(played.element, "rect");
  return {{"words", step.words},
          {"result", inWords(played.result)},
          {"message", played.message},
          {"began", played.began},
          {"seconds", played.seconds},
          {"costs",
           {{"busyMs", played.costs.busyMs},
            {"longestMs", played.costs.longestMs},
            {"cpuMs", played.costs.cpuMs},
            {"memoryBytes", played.costs.memoryBytes}}},
          {"element", played.element},
          {"rect", rect.empty() ? Json() : rect},
          {"way", wayOf(step.act, rect)},
          {"ways", waysOf(step.element)},
          {"used", played.locator ? Json(*played.locator) : Json()},
          {"candidates", candidatesOf(played)},
          {"output", printableLines(played.output)},
          {"before", pictures.placeOf(played.before)},
          {"after", pictures.placeOf(played.after)}};
}

// As a script holds it: nothing in it ends the script.
std::string withinScript(const Json& value) {
  std::string text;
  for (const char c : compact(value)) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      text += c;
    }
  }
  return text;
}

void replace(std::string& page, std::string_view place, const std::string& text) {
  page.replace(page.find(place), place.size(), text);
}

}  // namespace

std::vector<PlayReport::Shown> PlayReport::shown(const Session& session,
                                                 std::span<const Played> steps) {
  std::vector<Shown> all;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const Step& step = session.steps()[i];
    all.push_back({step.inWords(), step.element(), step.json(), &steps[i]});
  }
  return all;
}

std::string PlayReport::page(std::span<const Shown> steps, const Address& addressOf) const {
  Pictures pictures(addressOf);
  Json told = Json::array();
  double took = 0;
  bool hasPassed = true;
  for (const auto& step : steps) {
    told.push_back(stepOf(step, pictures));
    took = std::max(took, step.played->began + step.played->seconds);
    hasPassed = hasPassed && !step.played->hasFailed();
  }
  const Json play = {{"file", file},
                     {"program", program},
                     {"played", played},
                     {"recorded", recorded},
                     {"toolkit", toolkit},
                     {"warnings", warnings},
                     {"passed", hasPassed},
                     {"seconds", took},
                     {"steps", std::move(told)},
                     {"pictures", pictures.addresses()}};
  std::string page = kReportPage;
  replace(page, "@style@", kReportStyleSheet);
  replace(page, "@script@", kReportScript);
  replace(page, "@play@", withinScript(play));
  return page;
}

std::string addressWithin(const Picture& picture) {
  return "data:image/" + picture.format + ";base64," + picture.data;
}

}  // namespace tarni::host
