#include "backends/posix/LayerValues.h"

#include <set>
#include <utility>

namespace tarni::posix {
namespace {

const std::string* kept(std::string_view key) {
  static auto* const keys = new std::set<std::string, std::less<>>;
  const auto known = keys->find(key);
  return known != keys->end() ? &*known : &*keys->emplace(key).first;
}

}  // namespace

const std::string* LayerValues::find(std::string_view key) const {
  for (const Value& value : first_) {
    if (!value.key) return nullptr;
    if (*value.key == key) return &value.text;
  }
  for (const Value& value : more_) {
    if (*value.key == key) return &value.text;
  }
  return nullptr;
}

void LayerValues::set(std::string text, std::string_view key) {
  const std::string* const mine = kept(key);
  for (Value& value : first_) {
    if (value.key && value.key != mine) continue;
    value = {mine, std::move(text)};
    return;
  }
  for (Value& value : more_) {
    if (value.key != mine) continue;
    value.text = std::move(text);
    return;
  }
  more_.push_back({mine, std::move(text)});
}

}  // namespace tarni::posix
