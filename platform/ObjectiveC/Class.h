// Runtime classes as values: a name and a superclass. A kind that exists only by name (a private
// class that nobody links) needs no C++ type.
//
// Classes are made once, live as long as the process and are compared by address. Any thread.
#pragma once

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarni::platform {

class ClassInfo;
using Class = const ClassInfo*;

class ClassInfo {
 public:
  // `name` outlives the class.
  constexpr ClassInfo(const char* name, Class superclass) : text_(name), superclass_(superclass) {}
  // Keeps the name.
  ClassInfo(const std::string& name, Class superclass);
  ClassInfo(const ClassInfo&) = delete;
  ClassInfo& operator=(const ClassInfo&) = delete;

  // One text for all classes of the name, so that names can be compared by address as well.
  const std::string& name() const { return details().name; }
  const std::string& lowercaseName() const { return details().lowercaseName; }
  Class superclass() const { return superclass_; }

  // Constant time, however deep the hierarchy.
  bool isSubclassOf(Class kind) const {
    if (!kind) return false;
    const std::vector<Class>& lineage = details().lineage;
    const std::size_t depth = kind->details().lineage.size() - 1;
    return depth < lineage.size() && lineage[depth] == kind;
  }

 private:
  struct Details {
    const std::string& name;
    std::string lowercaseName;
    std::vector<Class> lineage;  // from the root class to this one
  };

  const Details& details() const {
    const Details* const known = details_.load(std::memory_order_acquire);
    return known ? *known : makeDetails();
  }
  const Details& makeDetails() const;

  const char* text_;
  Class superclass_;
  mutable std::atomic<const Details*> details_ = nullptr;  // made when somebody asks
};

// The class of that name; made on first use, below `superclass` (null for a root class). A name
// that is known already keeps its superclass.
Class defineClass(std::string_view name, Class superclass);

// The class of that name, or null when no such class exists in the process.
Class NSClassFromString(std::string_view name);

}  // namespace tarni::platform
