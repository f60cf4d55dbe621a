// LayerValues: the texts that a layer keeps under keys. Hardly any layer has one, so none takes
// more than a pointer. Main thread.
#pragma once

#include <forward_list>
#include <string>
#include <string_view>

namespace tarni::posix {

class LayerValues {
 public:
  // Null when the key was never set. The text stays where it is, whatever other keys are set.
  const std::string* find(std::string_view key) const;
  void set(std::string text, std::string_view key);

 private:
  struct Value {
    std::string key;
    std::string text;
  };

  std::forward_list<Value> values_;
};

}  // namespace tarni::posix
