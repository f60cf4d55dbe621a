// Runtime classes as values: a name and a superclass. A kind that exists only by name (a private
// class that nobody links) needs no C++ type.
//
// Classes are made once, live as long as the process and are compared by address. Any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarni::platform {

class ClassInfo;
using Class = const ClassInfo*;

class ClassInfo {
 public:
  ClassInfo(std::string name, Class superclass);
  ClassInfo(const ClassInfo&) = delete;
  ClassInfo& operator=(const ClassInfo&) = delete;

  // One text for all classes of the name, so that names can be compared by address as well.
  const std::string& name() const { return name_; }
  const std::string& lowercaseName() const { return lowercaseName_; }
  Class superclass() const { return superclass_; }

  // Constant time, however deep the hierarchy.
  bool isSubclassOf(Class kind) const {
    return kind && kind->depth() < lineage_.size() && lineage_[kind->depth()] == kind;
  }

 private:
  std::size_t depth() const { return lineage_.size() - 1; }

  const std::string& name_;
  std::string lowercaseName_;
  Class superclass_;
  std::vector<Class> lineage_;  // from the root class to this one
};

// The class of that name; made on first use, below `superclass` (null for a root class). A name
// that is known already keeps its superclass.
Class defineClass(std::string_view name, Class superclass);

// The class of that name, or null when no such class exists in the process.
Class NSClassFromString(std::string_view name);

// A text in lower case, ASCII letters only: class names, command names and flags.
std::string lowercase(std::string_view text);

}  // namespace tarni::platform
