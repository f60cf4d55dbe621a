#include "tests/controls/StepWords.h"

namespace tarni::test {

using nlohmann::json;

namespace {

// What a field or a control shows changes; what it is called does not.
std::string element(const json& about, bool isValue) {
  const std::string text = about.value("text", "");
  const std::string label = about.value("label", "");
  const bool isNamed = !label.empty() && !(isValue && label == text);
  std::string name = isNamed ? label : isValue ? about["near"].value("label", "") : text;
  if (!name.empty()) name = " \"" + name + "\"";
  return about.value("class", "") + name;
}

std::string menuPath(const json& step) {
  std::string path;
  for (const json& entry : step["path"]) {
    path += (path.empty() ? " " : " > ") + entry.value("text", "");
  }
  return path;
}

std::string clickOf(const json& step) {
  std::string word = step["count"] == 2 ? "double-click" : "click";
  if (step["button"] != "left") word = step["button"].get<std::string>() + "-" + word;
  return word;
}

// How far a drag went to the right.
std::string pixels(const json& step) {
  return " by " + std::to_string(step["way"].back()["x"].get<int>());
}

}  // namespace

std::string wordsOf(const json& step) {
  const std::string act = step["act"];
  if (act == "menu") return act + menuPath(step);
  if (act == "key") return act + " " + step["key"].get<std::string>();
  const json about = step.value("element", json::object());
  const bool isValue = act == "choose" || about.value("editable", false);
  std::string words = (act == "click" ? clickOf(step) : act) + " " + element(about, isValue);
  if (act == "drag") words += pixels(step);
  if (step.contains("secret")) return words + " = secret " + step["secret"].get<std::string>();
  if (act == "type") words += " = " + step["text"].get<std::string>();
  if (act == "choose") words += " = " + step["value"].get<std::string>();
  if (step.contains("checked")) words += step["checked"] ? " = on" : " = off";
  if (step.contains("expanded")) words += step["expanded"] ? " = open" : " = closed";
  return words;
}

}  // namespace tarni::test
