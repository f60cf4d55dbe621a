// MappedActionObject: the action name and data under which a touch on a view is recorded. Plain
// value.
#pragma once

#include <string>
#include <utility>

namespace tarni {

class MappedActionObject {
 public:
  const std::string& getActionName() const { return actionName_; }
  void setActionName(std::string name) { actionName_ = std::move(name); }
  const std::string& getDataArgs() const { return dataArgs_; }
  // Kept for callers from outside.
  void setDataArgs(std::string data) { dataArgs_ = std::move(data); }

 private:
  std::string actionName_;
  std::string dataArgs_;
};

}  // namespace tarni
