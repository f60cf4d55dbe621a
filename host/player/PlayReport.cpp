#include "host/player/PlayReport.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <string_view>

#include "PageParts.h"
#include "host/guard/Printable.h"
#include "host/player/ElementFinder.h"

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
Json wayOf(const Step& step, const Json& rect) {
  Json way = Json::array();
  const Json& at = objectIn(step.json(), "at");
  if (rect.empty() || at.empty()) return way;
  const double x = memberAsNumber(rect, "x") + memberAsNumber(at, "x");
  const double y = memberAsNumber(rect, "y") + memberAsNumber(at, "y");
  way.push_back({{"x", x}, {"y", y}});
  for (const Json& point : step.json().value("way", Json::array())) {
    way.push_back({{"x", x + memberAsNumber(point, "x")}, {"y", y + memberAsNumber(point, "y")}});
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

Json stepOf(const Step& step, const Played& played, Pictures& pictures) {
  const Json& rect = objectIn(played.element, "rect");
  return {{"words", step.inWords()},
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
          {"way", wayOf(step, rect)},
          {"ways", waysOf(step.element())},
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

std::string PlayReport::page(const Session& session, std::span<const Played> steps,
                             const Address& addressOf) const {
  Pictures pictures(addressOf);
  Json told = Json::array();
  double took = 0;
  bool hasPassed = true;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    told.push_back(stepOf(session.steps()[i], steps[i], pictures));
    took = std::max(took, steps[i].began + steps[i].seconds);
    hasPassed = hasPassed && !steps[i].hasFailed();
  }
  const Json play = {{"file", file},
                     {"program", program},
                     {"played", played},
                     {"recorded", session.recorded},
                     {"toolkit", session.toolkit},
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
