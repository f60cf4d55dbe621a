#include "tests/host/ScriptedScreen.h"

#include <nlohmann/json.hpp>

namespace tarni::test {

using nlohmann::json;

namespace {

std::string flag(bool value) {
  return value ? "true" : "false";
}

std::string output(const std::string& text) {
  return json{{{"output", text}}}.dump();
}

}  // namespace

std::string ScriptedScreen::answer(const std::string& line) {
  const std::lock_guard lock(mutex_);
  const auto command = json::parse(line);
  const auto at = [&command](const char* key) { return command.value(key, ""); };
  const auto name = at("functionname");
  const auto value = at("accessorvalue");
  if (name == "findelements") return find(at("tagname"), at("accessortype"), value);
  if (name == "ai_findelements") return describe(at("tagname"));
  if (name == "ai_getscreensnapshot") return output("/9j/4AAQ");
  const auto prefix = "ID-" + std::to_string(generation_) + "-";
  if (!value.starts_with(prefix)) return "[]";
  return act(name, std::stoul(value.substr(prefix.size())), at("datavalue"));
}

std::vector<std::string> ScriptedScreen::deeds() const {
  const std::lock_guard lock(mutex_);
  return deeds_;
}

std::string ScriptedScreen::find(const std::string& tag, const std::string& type,
                                 const std::string& value) {
  ++generation_;
  auto found = json::array();
  for (std::size_t i = 0; i < elements_.size(); ++i) {
    const auto& element = elements_[i];
    const bool fits = type == "xpath" ? element.xpath == value : element.recordedText == value;
    if (element.className == tag && fits) {
      found.push_back(
          {{"elementID", "ID-" + std::to_string(generation_) + "-" + std::to_string(i)}});
    }
  }
  return found.dump();
}

std::string ScriptedScreen::describe(const std::string& tag) {
  if (onLook) onLook(elements_, looks_);
  ++looks_;
  ++generation_;
  auto found = json::array();
  for (std::size_t i = 0; i < elements_.size(); ++i) {
    const auto& element = elements_[i];
    if (!tag.empty() && element.className != tag) continue;
    found.push_back({{"elementID", "ID-" + std::to_string(generation_) + "-" + std::to_string(i)},
                     {"text", element.text},
                     {"elementType", element.className},
                     {"childCount", "0"},
                     {"isProbablyTappable", flag(element.tappable)},
                     {"isVisibleInViewHierarchy", flag(element.visible)},
                     {"isVisibleInWindowFrame", "true"},
                     {"isUserInteractionEnabled", flag(element.enabled)},
                     {"isEditable", flag(element.editable)},
                     {"rectangle",
                      {{"width", std::to_string(element.width) + ".00"},
                       {"height", "20.00"},
                       {"x", "1.00"},
                       {"y", "2.00"}}}});
  }
  return found.dump();
}

std::string ScriptedScreen::act(const std::string& name, std::size_t index,
                                const std::string& data) {
  auto& element = elements_.at(index);
  if (name == "gettext") return output(element.text);
  if (name == "getwidth") return output(std::to_string(element.width));
  if (name == "getheight") return output("20");
  if (name == "isenabled") return output(flag(element.enabled));
  if (name == "isselected") {
    return element.state.empty() ? "[]" : json{{{"output", element.state}}}.dump();
  }
  deeds_.push_back(name + " " + std::to_string(index) + (data.empty() ? "" : " " + data));
  if (!obeys) return "[]";
  if (name == "sendkeysonelement") element.text = data;
  if (!element.state.empty()) element.state = flag(element.state != "true");
  return "[]";
}

}  // namespace tarni::test
