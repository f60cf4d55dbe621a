#include "agent/session/TreeVersions.h"

namespace tarni::session {
namespace {

// A program that shows ever new things does not fill the memory with what has gone.
constexpr std::size_t kMostGone = 100'000;

}  // namespace

TreeVersions& TreeVersions::sharedInstance() {
  static auto* const shared = new TreeVersions;
  return *shared;
}

void TreeVersions::begin() {
  ++look_;
  seen_ = 0;
  hasChanged_ = false;
}

bool TreeVersions::note(Handle element, std::string_view description, Version since) {
  Known& known = known_[element];
  known.look = look_;
  ++seen_;
  const std::size_t hash = std::hash<std::string_view>{}(description);
  if (known.changed == 0 || known.description != hash) {
    known.description = hash;
    known.changed = version_ + 1;
    hasChanged_ = true;
  }
  return known.changed > since;
}

TreeVersions::Version TreeVersions::end() {
  const bool hasLost = seen_ < known_.size();
  if (!hasChanged_ && !hasLost) return version_;
  ++version_;
  if (!hasLost) return version_;
  for (auto entry = known_.begin(); entry != known_.end();) {
    if (entry->second.look == look_) {
      ++entry;
      continue;
    }
    gone_.push_back({entry->first, version_});
    entry = known_.erase(entry);
  }
  while (gone_.size() > kMostGone) {
    oldest_ = gone_.front().version;
    gone_.pop_front();
  }
  return version_;
}

std::vector<Handle> TreeVersions::goneSince(Version version) const {
  std::vector<Handle> elements;
  for (auto entry = gone_.rbegin(); entry != gone_.rend() && entry->version > version; ++entry) {
    elements.push_back(entry->element);
  }
  return elements;
}

}  // namespace tarni::session
