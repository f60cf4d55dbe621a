// TreeVersions: what every element of the tree was like when somebody last looked, so that a client
// that knows one version is told only what has changed since. One for all clients. Main thread.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "agent/session/Elements.h"

namespace tarni::session {

class TreeVersions {
 public:
  using Version = std::int64_t;

  static TreeVersions& sharedInstance();

  // A look begins; it notes every element there is, and then ends.
  void begin();
  // True when the element, of which `description` is the text, has changed since `known`.
  bool note(Handle element, std::string_view description, Version known);
  // The version of the tree as it now is.
  Version end();

  // False when it is not known any more what has changed since.
  bool knows(Version version) const { return version >= oldest_ && version <= version_; }
  // The elements that have gone since, to be asked after `end`.
  std::vector<Handle> goneSince(Version version) const;

 private:
  struct Known {
    std::size_t description = 0;  // its hash
    Version changed = 0;
    std::uint64_t look = 0;
  };
  struct Gone {
    Handle element;
    Version version;
  };

  std::unordered_map<Handle, Known> known_;
  std::deque<Gone> gone_;
  Version version_ = 0;
  Version oldest_ = 1;
  std::uint64_t look_ = 0;
  std::size_t seen_ = 0;
  bool hasChanged_ = false;
};

}  // namespace tarni::session
