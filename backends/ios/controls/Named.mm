#include "backends/ios/controls/Named.h"

#include <string_view>

#include "backends/ios/guard/Guard.h"
#include "backends/ios/runtime/RuntimeClass.h"

namespace tarni::ios {
namespace {

// `part` is of the lower-cased name.
bool isCalled(::UIView* view, std::string_view part, const char* selector) {
  return classOf(view)->lowercaseName().find(part) != std::string::npos &&
         answered(view, "respondsToSelector:", [&]() -> bool {
           return [view respondsToSelector:sel_registerName(selector)];
         });
}

}  // namespace

bool isCalledSwitch(::UIView* view) { return isCalled(view, "switch", "isOn"); }

bool isCalledSegmentedControl(::UIView* view) {
  return isCalled(view, "segmentedcontrol", "selectedSegmentIndex");
}

bool isCalledScrollView(::UIView* view) {
  return isCalled(view, "scrollview", "setContentOffset:animated:");
}

}  // namespace tarni::ios
