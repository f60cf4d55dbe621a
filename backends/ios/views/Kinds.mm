#include "backends/ios/views/Kinds.h"

#include "backends/ios/controls/Named.h"
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
    {"WKWebView", makeWKWebView},
    {"UIWebBrowserView", makeWebBrowserView},
};

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
  return kind ? kind->make(view) : makeNamed<View>(view);
}

}  // namespace tarni::ios
