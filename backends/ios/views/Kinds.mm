#include "backends/ios/views/Kinds.h"

#include <string_view>

#include "backends/ios/guard/Guard.h"
#include "backends/ios/runtime/RuntimeClass.h"

namespace tarni::ios {
namespace {

struct Kind {
  const char* className;
  std::shared_ptr<View> (*make)(::UIView* view);
};

// Subclasses before their superclasses. By name, since no system has all of them.
constexpr Kind kKinds[] = {
    {"UIButton", makeButton},
    {"UITextField", makeTextField},
    {"UISwitch", makeSwitch},
    {"UISegmentedControl", makeSegmentedControl},
    {"UIControl", makeControl},
    {"UILabel", makeLabel},
    {"UITextView", makeTextView},
    {"UIScrollView", makeScrollView},
    {"UITableViewCell", makeTableViewCell},
    {"UIWebView", makeWebView},
    {"UIWebBrowserView", makeWebBrowserView},
};

// An application's own control may say by its name what it is, and answer as UIKit's does.
struct NamedKind {
  std::string_view part;  // of the lower-cased name
  const char* answers;
  std::shared_ptr<View> (*make)(::UIView* view);
};

constexpr NamedKind kNamedKinds[] = {
    {"switch", "isOn", makeSwitch},
    {"segmentedcontrol", "selectedSegmentIndex", makeSegmentedControl},
    {"scrollview", "setContentOffset:animated:", makeScrollView},
};

bool isNamed(::UIView* view, const NamedKind& kind) {
  if (classOf(view)->lowercaseName().find(kind.part) == std::string::npos) return false;
  return answered(view, "respondsToSelector:", [&]() -> bool {
    return [view respondsToSelector:sel_registerName(kind.answers)];
  });
}

// Null for what is none of them.
const Kind* kindOfClass(::UIView* view) {
  for (const Kind& kind : kKinds) {
    const ::Class cls = objc_lookUpClass(kind.className);
    if (cls && isKindOf(view, cls)) return &kind;
  }
  return nullptr;
}

}  // namespace

std::shared_ptr<View> makeKind(::UIView* view) {
  const Kind* const kind = kindOfClass(view);
  if (kind && kind->make != makeControl) return kind->make(view);
  for (const NamedKind& named : kNamedKinds) {
    if (isNamed(view, named)) return named.make(view);
  }
  return kind ? kind->make(view) : std::make_shared<View>(view);
}

}  // namespace tarni::ios
