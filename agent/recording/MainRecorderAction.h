// MainRecorderAction: puts one recorded step, or the description of one spied element, together
// from its keys. One thread at a time; a fresh one for each step.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarni {

class MainRecorderAction {
 public:
  MainRecorderAction();

  // Each sets one key of its dictionary; nil removes the key. Keys keep the order in which they
  // came first.
  void addMainActionProperty(std::string_view key, std::optional<std::string> value);
  void addObjectProperty(std::string_view key, std::optional<std::string> value);
  void addParentProperty(std::string_view key, std::optional<std::string> value);
  void addDataArgsProperty(std::string_view key, std::optional<std::string> value);

  // The step: the main dictionary with "arguments", an array of the object dictionary (with the
  // parent dictionary as its "parent") and the data-arguments dictionary.
  nlohmann::ordered_json CreateRecorderAction() const;
  // The object dictionary with its "parent".
  nlohmann::ordered_json CreateSpyData() const;

 private:
  using Dictionary = std::vector<std::pair<std::string, std::string>>;

  static void setValueForKey(Dictionary& dictionary, std::string_view key,
                             std::optional<std::string> value);

  Dictionary main_;
  Dictionary object_;
  Dictionary parent_;
  Dictionary dataArgs_;
};

}  // namespace tarni
