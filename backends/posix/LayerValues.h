// LayerValues: the texts that a layer keeps under keys. A walk asks the layer of every view for the
// agent's tags, so the first texts, mostly all there are, lie in the layer itself and their keys,
// the same on all layers, are kept once. Main thread.
#pragma once

#include <array>
#include <list>
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
    const std::string* key = nullptr;
    std::string text;
  };

  std::array<Value, 2> first_;
  std::list<Value> more_;
};

}  // namespace tarni::posix
