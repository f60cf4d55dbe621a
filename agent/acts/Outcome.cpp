#include "agent/acts/Outcome.h"

#include <algorithm>

#include "agent/elements/Utilities.h"
#include "agent/elements/ViewKinds.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"
#include "platform/UIKit/UIItems.h"

namespace tarni {

using platform::UIViewRef;

namespace {

// The arrow of a spin box stands in it, what is drawn in the arrow in that.
constexpr int kHighest = 3;

template <typename Kind>
UIViewRef nearest(UIViewRef view) {
  for (int level = 0; view && level <= kHighest; ++level, view = view->superview()) {
    if (kindOf<Kind>(view)) return view;
  }
  return nullptr;
}

bool isOn(const UIViewRef& view) {
  return kindOf<platform::UISwitch>(view)->isOn();
}

}  // namespace

Outcome::Outcome(const UIViewRef& view) : view_(view) {
  if (const UIViewRef control = nearest<platform::UIValueControl>(view)) {
    const auto* const valued = kindOf<platform::UIValueControl>(control);
    control_ = control;
    value_ = valued->currentValue();
    choice_ = valued->chosenPlace();
  }
  const UIViewRef toggle = nearest<platform::UISwitch>(view);
  if (toggle && toggle->isKindOfClass(platform::uikit::UISwitch)) {
    toggle_ = toggle;
    wasOn_ = isOn(toggle);
  }
  if (const auto expanded =
          view && !kindOf<platform::UIItemCell>(view) ? view->isExpanded() : std::nullopt) {
    node_ = view;
    wasExpanded_ = *expanded;
  }
  const UIViewRef cell = nearest<platform::UIItemCell>(view);
  if (const auto expanded = cell ? cell->isExpanded() : std::nullopt) {
    cell_ = cell;
    rows_ = cell->superview();
    rowText_ = Utilities::getUIViewText(cell);
    place_ = kindOf<platform::UIItemCell>(cell)->place();
    wasExpanded_ = *expanded;
  }
}

UIViewRef Outcome::apply(Act& act) const {
  const auto became = [&](std::string_view kind, const UIViewRef& view) {
    act.kind = kind;
    return view == view_.lock() ? nullptr : view;
  };
  if (const UIViewRef control = control_.lock()) {
    const auto* const valued = kindOf<platform::UIValueControl>(control);
    std::string value = valued->currentValue();
    const std::optional<std::size_t> choice = valued->chosenPlace();
    if (value != value_ || isOtherOfThatText(*valued, choice)) {
      act.value = std::move(value);
      act.choice = choice;
      return became(acts::kChoose, control);
    }
  }
  if (const UIViewRef toggle = toggle_.lock(); toggle && isOn(toggle) != wasOn_) {
    act.state = !wasOn_;
    return became(acts::kSwitch, toggle);
  }
  const UIViewRef node = node_.lock();
  const UIViewRef row = node ? node : rowNow();
  const auto expanded = row ? row->isExpanded() : std::nullopt;
  if (expanded && *expanded != wasExpanded_) {
    // What was pressed keeps its portrait, wherever the row stands now.
    act.state = *expanded;
    act.kind = acts::kExpand;
  }
  return nullptr;
}

// Of several choices of one text. Choices that are moved or closed, as tabs, take along the place
// of the one that stays chosen.
bool Outcome::isOtherOfThatText(const platform::UIValueControl& control,
                                std::optional<std::size_t> choice) const {
  if (choice == choice_ || !choice_) return false;
  const std::vector<std::string> choices = control.choices();
  return *choice_ < choices.size() && choices[*choice_] == value_;
}

bool Outcome::isSameRow(const UIViewRef& view) const {
  const auto* const cell = kindOf<platform::UIItemCell>(view);
  if (!cell || !view->isExpanded()) return false;
  const platform::ItemPlace place = cell->place();
  return place.row == place_.row && place.column == place_.column &&
         Utilities::getUIViewText(view) == rowText_;
}

// A table that opens or closes a node may give the cell to another row, and the row another cell.
UIViewRef Outcome::rowNow() const {
  const UIViewRef cell = cell_.lock();
  if (cell && isSameRow(cell)) return cell;
  const UIViewRef rows = rows_.lock();
  if (!rows) return nullptr;
  const auto siblings = rows->subviews();
  const auto found =
      std::ranges::find_if(siblings, [this](const UIViewRef& view) { return isSameRow(view); });
  return found == siblings.end() ? nullptr : *found;
}

}  // namespace tarni
