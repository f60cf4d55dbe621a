#include "host/cli/Showing.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "host/cli/Invocation.h"

namespace tarni::host {

bool isOnScreen(const Json& description) {
  return isTextTrue(description, "isVisibleInViewHierarchy") &&
         isTextTrue(description, "isVisibleInWindowFrame");
}

bool isCovered(const Json& description) {
  return isTextTrue(description, "isUserInteractionEnabled") &&
         textIn(description, "isProbablyTappable") == "false";
}

bool isInSight(const Json& description) {
  return isOnScreen(description) && !isCovered(description);
}

Looks Looks::of(Invocation& invocation, const std::string& id) {
  const auto ask = [&](const char* function) {
    return invocation.call({function, "", "", id}).output().value_or("");
  };
  return {ask("gettext"), ask("getwidth"), ask("getheight")};
}

Showing::Showing(Invocation& invocation, const std::string& beside, bool isOfFind,
                 bool (*isShown)(const Json&)) {
  const auto rounded = [](const Json& frame, const char* key) {
    return std::to_string(std::lrint(numberOfText(frame, key)));
  };
  const auto descriptions =
      invocation.call({.functionName = "ai_findelements", .window = beside}).entries();
  for (const auto& description : descriptions) {
    if (isOfFind && !isTextTrue(description, "isVisibleInWindowFrame")) continue;
    const auto& frame = objectIn(description, "rectangle");
    const Looks looks{textIn(description, "text"), rounded(frame, "width"),
                      rounded(frame, "height")};
    const std::string answer = isShown(description) ? "true" : "false";
    auto& known = answers_[looks];
    known = known.empty() || known == answer ? answer : "?";
  }
}

std::optional<std::string> Showing::of(const Looks& looks) const {
  const auto found = answers_.find(looks);
  return found != answers_.end() ? std::optional(found->second) : std::nullopt;
}

}  // namespace tarni::host
