// XpathTrie: XPath positions and the GUIDs filed under them. A position shares the steps that it
// has in common with others, so that the positions of a very deep tree stay small; its text is made
// when asked for. Main thread.
//
// A position reads \UIWindowContent[0]\UIButton[1]: each step a backslash, a class name and a
// 0-based index.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/ObjectiveC/Class.h"

namespace tarni {

class XpathTrie {
 public:
  // One position; the root is the empty one.
  using Node = std::uint32_t;
  static constexpr Node kRoot = 0;

  XpathTrie();

  // Files `guid` under the position one step below `prefix`: it takes the position over from the
  // GUID filed there before, which keeps the position as its own; or it leaves the position to
  // that, and has it as its own as well.
  void file(Node prefix, platform::Class cls, long index, const std::string& guid,
            bool takesOver = true);

  // The position filed for the GUID, or null.
  std::optional<Node> nodeOfGuid(std::string_view guid) const;
  std::string text(Node node) const;
  std::size_t textLength(Node node) const { return steps_[node].length; }

  // The GUID filed under the position, or null.
  std::optional<std::string> objectForKey(std::string_view xpath) const;
  // How many positions have a GUID.
  std::size_t count() const { return count_; }

 private:
  struct Step {
    Node prefix = kRoot;
    const std::string* name = nullptr;  // of the class
    long index = 0;
    std::size_t length = 0;             // of the text of the whole position
    const std::string* guid = nullptr;  // the key in guids_
  };
  struct Key {
    Node prefix;
    const std::string* name;
    long index;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const;
  };
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };

  std::optional<Node> find(std::string_view xpath) const;
  std::optional<Node> child(Node prefix, std::string_view step) const;

  std::vector<Step> steps_;
  std::unordered_map<Key, Node, KeyHash> children_;
  std::unordered_map<std::string, Node, TextHash, std::equal_to<>> guids_;
  std::size_t count_ = 0;
};

}  // namespace tarni
