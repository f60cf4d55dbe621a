#include "agent/diagnostics/ViewHierarchy.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include "agent/core/state/MainThread.h"
#include "agent/core/state/Utilities_Text.h"
#include "agent/elements/Utilities.h"
#include "agent/elements/ViewWalk.h"
#include "platform/Platform.h"

namespace tarni::Diagnostics {

using platform::CGRect;
using platform::UIViewRef;

namespace {

// Deeper views keep this indent and say how deep they are.
constexpr std::size_t kDeepestIndent = 40;

std::string placeOf(const UIViewRef& view) {
  const CGRect frame = view->frame();
  const auto text = [](double value) { return Utilities::decimalText(value, 0); };
  return text(frame.size.width) + "x" + text(frame.size.height) + " at " + text(frame.origin.x) +
         "," + text(frame.origin.y);
}

// One line however many the text has.
std::string quoted(std::string text) {
  std::ranges::replace(text, '\n', ' ');
  return '"' + text + '"';
}

std::string lineOf(const UIViewRef& view, std::size_t depth) {
  std::string line(2 * std::min(depth, kDeepestIndent), ' ');
  if (depth > kDeepestIndent) line += "(" + std::to_string(depth) + ") ";
  line += view->getClass()->name() + "  " + placeOf(view);
  if (const std::string text = Utilities::getUIViewTextForPlayBack(view); !text.empty()) {
    line += "  " + quoted(text);
  }
  if (const std::string label = Utilities::getUIViewAccesibilityLabel(view); !label.empty()) {
    line += "  label " + quoted(label);
  }
  if (view->isHidden()) line += "  hidden";
  if (!view->isUserInteractionEnabled()) line += "  takes no touches";
  if (view->isFirstResponder()) line += "  first responder";
  return line;
}

template <typename Write>
void writeHierarchy(const UIViewRef& root, Write&& write) {
  if (!root) return;
  write(lineOf(root, 0));
  std::vector<WalkLevel> levels;
  walkSubviews(root, levels, [&](const WalkStep& step) {
    write(lineOf(step.view, step.path.size()));
    return true;
  });
}

}  // namespace

std::string viewHierarchyText(const UIViewRef& root) {
  assertMainThread();
  std::string text;
  writeHierarchy(root, [&text](const std::string& line) { text += line + '\n'; });
  return text;
}

void printViewHierarchy() {
  assertMainThread();
  for (const auto& window : platform::current().application->windowsWithKeyWindow()) {
    writeHierarchy(window, [](const std::string& line) { platform::NSLog("%s", line.c_str()); });
  }
}

}  // namespace tarni::Diagnostics
