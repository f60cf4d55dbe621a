#include "backends/posix/LayerValues.h"

#include <utility>

namespace tarni::posix {

const std::string* LayerValues::find(std::string_view key) const {
  for (const Value& value : values_) {
    if (value.key == key) return &value.text;
  }
  return nullptr;
}

void LayerValues::set(std::string text, std::string_view key) {
  for (Value& value : values_) {
    if (value.key != key) continue;
    value.text = std::move(text);
    return;
  }
  values_.push_front({std::string(key), std::move(text)});
}

}  // namespace tarni::posix
