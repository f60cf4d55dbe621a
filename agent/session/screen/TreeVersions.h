// TreeVersions: what every element of the tree was like when somebody last looked, so that a client
// that knows one version is told only what has changed since. One for all clients. Main thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <list>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "agent/session/screen/Elements.h"

namespace tarni::session {

class TreeVersions {
 public:
  using Version = std::int64_t;

  static TreeVersions& sharedInstance();

  // A look at everything begins; it notes every element there is, `index` being its place in its
  // parent, and then ends.
  void begin();
  // True when the element, of which `description` is the text, has changed since `known`.
  bool note(Handle element, std::size_t index, std::string_view description, Version known);
  // The version of the tree as it now is.
  Version end();

  // The same for a look at a few that were there and stand where they stood.
  void beginSome() { hasChanged_ = false; }
  void noteAgain(Handle element, std::string_view description);
  Version endOfSome();
  // Where the last look at everything found the element; null when it did not.
  std::optional<std::size_t> indexOf(Handle element) const;

  // The last that a look at everything found: since then none came, went or moved.
  Version lastWhole() const { return lastWhole_; }
  // Whether a look at everything came upon pages, which do not tell what changes in them.
  bool hasPages() const { return hasPages_; }
  void setHasPages(bool hasPages) { hasPages_ = hasPages; }
  // False when it is not known any more what has changed since.
  bool knows(Version version) const { return version >= oldest_ && version <= version_; }
  // The latest first. To be asked after the end of a look, as is the next.
  std::vector<Handle> changedSince(Version version) const;
  // The elements that have gone since.
  std::vector<Handle> goneSince(Version version) const;

 private:
  struct Known {
    std::size_t description = 0;  // its hash
    Version changed = 0;
    std::uint64_t look = 0;
    std::size_t index = 0;
    std::list<Handle>::iterator place = {};  // in `byChange_`
  };
  struct Gone {
    Handle element;
    Version version;
  };

  void compare(Known& known, std::string_view description);

  std::unordered_map<Handle, Known> known_;
  std::list<Handle> byChange_;  // the latest last
  std::deque<Gone> gone_;
  Version version_ = 0;
  Version oldest_ = 1;
  Version lastWhole_ = 0;
  std::uint64_t look_ = 0;
  std::size_t seen_ = 0;
  bool hasChanged_ = false;
  bool hasPages_ = false;
};

}  // namespace tarni::session
