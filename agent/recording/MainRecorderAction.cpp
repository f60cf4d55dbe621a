#include "agent/recording/MainRecorderAction.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "platform/Platform.h"

namespace tarni {

using nlohmann::ordered_json;

namespace {

ordered_json toJson(const std::vector<std::pair<std::string, std::string>>& dictionary) {
  ordered_json object = ordered_json::object();
  for (const auto& [key, value] : dictionary) object[key] = value;
  return object;
}

}  // namespace

MainRecorderAction::MainRecorderAction() {
  platform::NSLog("Initiation Called");
}

void MainRecorderAction::addMainActionProperty(std::string_view key,
                                               std::optional<std::string> value) {
  setValueForKey(main_, key, std::move(value));
}

void MainRecorderAction::addObjectProperty(std::string_view key, std::optional<std::string> value) {
  setValueForKey(object_, key, std::move(value));
}

void MainRecorderAction::addParentProperty(std::string_view key, std::optional<std::string> value) {
  setValueForKey(parent_, key, std::move(value));
}

void MainRecorderAction::addDataArgsProperty(std::string_view key,
                                             std::optional<std::string> value) {
  setValueForKey(dataArgs_, key, std::move(value));
}

ordered_json MainRecorderAction::CreateRecorderAction() const {
  ordered_json step = toJson(main_);
  ordered_json arguments = ordered_json::array();
  arguments.push_back(CreateSpyData());
  arguments.push_back(toJson(dataArgs_));
  step["arguments"] = std::move(arguments);
  return step;
}

ordered_json MainRecorderAction::CreateSpyData() const {
  ordered_json object = toJson(object_);
  object["parent"] = toJson(parent_);
  return object;
}

void MainRecorderAction::setValueForKey(Dictionary& dictionary, std::string_view key,
                                        std::optional<std::string> value) {
  const auto known = std::ranges::find(dictionary, key, &Dictionary::value_type::first);
  if (!value) {
    if (known != dictionary.end()) dictionary.erase(known);
  } else if (known != dictionary.end()) {
    known->second = *std::move(value);
  } else {
    dictionary.emplace_back(key, *std::move(value));
  }
}

}  // namespace tarni
