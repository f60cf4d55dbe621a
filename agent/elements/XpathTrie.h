// XpathTrie: XPath positions and the GUIDs filed under them. A position shares the steps that it
// has in common with others, so that the positions of a very deep tree stay small; its text is made
// when asked for. Positions are never forgotten, and every view has one, so each takes few bytes.
// Main thread.
//
// A position reads \UIWindowContent[0]\UIButton[1]: each step a backslash, a class name and a
// 0-based index.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Foundation/Guid.h"
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
  void file(Node prefix, platform::Class cls, long index, platform::Guid guid,
            bool takesOver = true);

  // The position filed for the GUID, or null.
  std::optional<Node> nodeOfGuid(platform::Guid guid) const;
  // Who has the position now.
  platform::Guid guidOf(Node node) const { return steps_[node].guid; }
  std::string text(Node node) const;
  // Whether it is the position's text; mostly one step says that it is not.
  bool isText(Node node, std::string_view xpath) const;

  // The GUID filed under the position, or null.
  std::optional<platform::Guid> objectForKey(std::string_view xpath) const;
  // How many positions have a GUID.
  std::size_t count() const { return count_; }

 private:
  // A chain of those whose hash is in the same place begins in `places_`; the root ends it.
  struct Step {
    const std::string* name = nullptr;  // of the class
    Node prefix = kRoot;
    std::uint32_t index = 0;
    platform::Guid guid;
    Node nextInPlace = kRoot;

    std::string text() const;
  };

  std::optional<Node> find(std::string_view xpath) const;
  std::optional<Node> child(Node prefix, std::string_view step) const;
  // The root when there is none.
  Node child(Node prefix, const std::string* name, std::uint32_t index) const;
  std::size_t placeOf(Node prefix, const std::string* name, std::uint32_t index) const;
  Node add(Node prefix, const std::string* name, std::uint32_t index);
  void spread();

  std::vector<Step> steps_;
  std::vector<Node> places_;  // as many as a power of two
  std::vector<Node> filed_;   // by the GUID's number; the root for none
  std::size_t count_ = 0;
};

}  // namespace tarni
