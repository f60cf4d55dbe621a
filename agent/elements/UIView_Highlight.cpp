#include "agent/elements/UIView_Highlight.h"

#include <cstdint>
#include <unordered_map>

#include "agent/core/state/MainThread.h"
#include "platform/Platform.h"

namespace tarni::Highlight {

using platform::UIViewRef;

namespace {

constexpr double kHighlightSeconds = 1.0;

// A highlight that is on. The view is told by its address, which nobody else can have while the
// weak reference is there.
struct Shown {
  platform::UIViewWeakRef view;
  Border own;
  std::uint64_t turn = 0;
};

using ShownHighlights = std::unordered_map<const platform::UIView*, Shown>;

ShownHighlights& shownHighlights() {
  assertMainThread();
  static auto* const shared = new ShownHighlights;
  return *shared;
}

Border borderOf(const UIViewRef& view) {
  const platform::CALayer& layer = view->layer();
  return {layer.borderWidth(), layer.borderColor()};
}

void setBorder(const UIViewRef& view, const Border& border) {
  view->layer().setBorderWidth(border.width);
  view->layer().setBorderColor(border.color);
}

const Shown* shown(const UIViewRef& view) {
  const auto found = shownHighlights().find(view.get());
  const bool isSameView = found != shownHighlights().end() && found->second.view.lock() == view;
  return isSameView ? &found->second : nullptr;
}

// Ends the highlight of that turn, unless it ended before or a later one took its place.
void endOnMain(const platform::UIView* address, std::uint64_t turn) {
  const auto found = shownHighlights().find(address);
  if (found == shownHighlights().end() || found->second.turn != turn) return;
  if (const UIViewRef view = found->second.view.lock()) setBorder(view, found->second.own);
  shownHighlights().erase(address);
}

}  // namespace

bool isHighlighted(const UIViewRef& view) {
  const platform::CALayer& layer = view->layer();
  return layer.borderWidth() == kHighlightWidth && layer.borderColor() == kHighlightColor;
}

bool isLeftover(const UIViewRef& view) {
  return isHighlighted(view) && !shown(view);
}

Border ownBorder(const UIViewRef& view) {
  const Shown* const highlight = shown(view);
  return highlight ? highlight->own : borderOf(view);
}

void highlightView(const UIViewRef& view) {
  static std::uint64_t lastTurn = 0;
  const std::uint64_t turn = ++lastTurn;
  shownHighlights().insert_or_assign(view.get(), Shown{view, ownBorder(view), turn});
  setBorder(view, {kHighlightWidth, kHighlightColor});
  platform::current().dispatch->afterOnMain(
      kHighlightSeconds, [address = view.get(), turn] { endOnMain(address, turn); });
}

void deHighlightView(const UIViewRef& view) {
  const Shown* const highlight = shown(view);
  setBorder(view, highlight ? highlight->own : Border{});
  shownHighlights().erase(view.get());
}

void deHighlightView(const UIViewRef& view, double borderWidth,
                     std::optional<platform::CGColor> borderColor) {
  setBorder(view, {borderWidth, borderColor});
  shownHighlights().erase(view.get());
}

}  // namespace tarni::Highlight
