#include "platform/ObjectiveC/Class.h"

#include <map>
#include <memory>
#include <mutex>
#include <unordered_set>

#include "platform/Foundation/Lowercase.h"
#include "platform/UIKit/Classes.h"

namespace tarni::platform {
namespace {

struct Registry {
  Registry() {
    for (const Class known : uikit::kAll) classes.emplace(known->name(), known);
  }

  std::mutex mutex;
  std::map<std::string_view, Class> classes;
};

// Never destroyed: threads of the agent still run while the process exits.
Registry& registry() {
  static auto* const shared = new Registry;
  return *shared;
}

// Kept for good, as the classes are.
const std::string& sharedName(std::string name) {
  static auto* const mutex = new std::mutex;
  static auto* const names = new std::unordered_set<std::string>;
  const std::lock_guard lock(*mutex);
  return *names->insert(std::move(name)).first;
}

}  // namespace

ClassInfo::ClassInfo(const std::string& name, Class superclass)
    : ClassInfo(sharedName(name).c_str(), superclass) {}

// Whoever comes second takes what the first has made.
const ClassInfo::Details& ClassInfo::makeDetails() const {
  auto made = std::make_unique<Details>(Details{sharedName(text_), lowercaseString(text_), {}});
  if (superclass_) made->lineage = superclass_->details().lineage;
  made->lineage.push_back(this);
  const Details* known = nullptr;
  if (!details_.compare_exchange_strong(known, made.get())) return *known;
  return *made.release();
}

Class defineClass(std::string_view name, Class superclass) {
  Registry& all = registry();
  const std::lock_guard lock(all.mutex);
  const auto known = all.classes.find(name);
  if (known != all.classes.end()) return known->second;
  const Class made = new ClassInfo(std::string(name), superclass);
  all.classes.emplace(made->name(), made);
  return made;
}

Class NSClassFromString(std::string_view name) {
  Registry& all = registry();
  const std::lock_guard lock(all.mutex);
  const auto known = all.classes.find(name);
  return known == all.classes.end() ? nullptr : known->second;
}

}  // namespace tarni::platform
