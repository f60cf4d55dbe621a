#include "agent/session/screen/TreeVersions.h"

#include <algorithm>

namespace tarni::session {
namespace {

// A program that shows ever new things does not fill the memory with what has gone: so much is
// kept, or as much as is there.
constexpr std::size_t kEnoughGone = 10'000;

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

bool TreeVersions::note(Handle element, std::size_t index, std::string_view description,
                        Version since) {
  Known& known = known_[element];
  if (known.changed == 0) known.place = byChange_.insert(byChange_.end(), element);
  known.look = look_;
  known.index = index;
  ++seen_;
  compare(known, description);
  return known.changed > since;
}

void TreeVersions::noteAgain(Handle element, std::string_view description) {
  compare(known_.at(element), description);
}

void TreeVersions::compare(Known& known, std::string_view description) {
  const std::size_t hash = std::hash<std::string_view>{}(description);
  if (known.changed != 0 && known.description == hash) return;
  known.description = hash;
  known.changed = version_ + 1;
  hasChanged_ = true;
  byChange_.splice(byChange_.end(), byChange_, known.place);
}

TreeVersions::Version TreeVersions::end() {
  const bool hasLost = seen_ < known_.size();
  if (!hasChanged_ && !hasLost) return version_;
  lastWhole_ = ++version_;
  if (!hasLost) return version_;
  for (auto entry = known_.begin(); entry != known_.end();) {
    if (entry->second.look == look_) {
      ++entry;
      continue;
    }
    gone_.push_back({entry->first, version_});
    byChange_.erase(entry->second.place);
    entry = known_.erase(entry);
  }
  while (gone_.size() > std::max(kEnoughGone, known_.size())) {
    oldest_ = gone_.front().version;
    gone_.pop_front();
  }
  return version_;
}

TreeVersions::Version TreeVersions::endOfSome() {
  if (hasChanged_) ++version_;
  return version_;
}

std::optional<std::size_t> TreeVersions::indexOf(Handle element) const {
  const auto entry = known_.find(element);
  if (entry == known_.end()) return std::nullopt;
  return entry->second.index;
}

std::vector<Handle> TreeVersions::changedSince(Version version) const {
  std::vector<Handle> elements;
  for (auto entry = byChange_.rbegin();
       entry != byChange_.rend() && known_.at(*entry).changed > version; ++entry) {
    elements.push_back(*entry);
  }
  return elements;
}

std::vector<Handle> TreeVersions::goneSince(Version version) const {
  std::vector<Handle> elements;
  for (auto entry = gone_.rbegin(); entry != gone_.rend() && entry->version > version; ++entry) {
    elements.push_back(entry->element);
  }
  return elements;
}

}  // namespace tarni::session
