#include "platform/ObjectiveC/Class.h"

#include <map>
#include <memory>
#include <mutex>
#include <unordered_set>

namespace tarni::platform {
namespace {

struct Registry {
  std::mutex mutex;
  std::map<std::string, std::unique_ptr<ClassInfo>, std::less<>> classes;
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

std::string lowercase(std::string_view text) {
  std::string lower(text);
  for (char& letter : lower) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return lower;
}

ClassInfo::ClassInfo(std::string name, Class superclass)
    : name_(sharedName(std::move(name))),
      lowercaseName_(lowercase(name_)),
      superclass_(superclass) {
  if (superclass) lineage_ = superclass->lineage_;
  lineage_.push_back(this);
}

Class defineClass(std::string_view name, Class superclass) {
  Registry& all = registry();
  const std::lock_guard lock(all.mutex);
  const auto known = all.classes.find(name);
  if (known != all.classes.end()) return known->second.get();
  auto made = std::make_unique<ClassInfo>(std::string(name), superclass);
  return all.classes.emplace(std::string(name), std::move(made)).first->second.get();
}

Class NSClassFromString(std::string_view name) {
  Registry& all = registry();
  const std::lock_guard lock(all.mutex);
  const auto known = all.classes.find(name);
  return known == all.classes.end() ? nullptr : known->second.get();
}

}  // namespace tarni::platform
