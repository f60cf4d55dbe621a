#include "agent/elements/Utilities.h"

#include <optional>
#include <string_view>

#include "agent/elements/ViewKinds.h"
#include "platform/Foundation/NSException.h"
#include "platform/Foundation/NSLog.h"
#include "platform/ObjectiveC/Runtime.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"

namespace tarni::Utilities {

namespace uikit = platform::uikit;
using platform::UIViewRef;

namespace {

using Text = std::optional<std::string>;

bool classNameContains(const UIViewRef& view, std::string_view part) {
  return view->getClass()->lowercaseName().find(part) != std::string::npos;
}

bool isInSegmentedControl(const UIViewRef& superview) {
  if (!superview || !classNameContains(superview, "segmentedcontrol")) return false;
  platform::NSLog("***FOUND UISEGMENTCONTROL");
  return true;
}

std::string allTitles(const UIViewRef& segmentedControl) {
  const auto* const control = kindOf<platform::UISegmentedControl>(segmentedControl);
  if (!control) return {};
  std::string titles;
  for (long index = 0; index < control->numberOfSegments(); ++index) {
    const std::string title = control->titleForSegmentAtIndex(index).value_or("");
    if (!title.empty()) titles += title + ";";
  }
  return titles;
}

std::string shownText(const platform::UITextField& field) {
  std::string typed = field.text();
  return typed.empty() ? field.placeholder().value_or("") : typed;
}

// The kinds whose text is the same for recording and for playback; null for all others.
Text textOfPlainKind(const UIViewRef& view) {
  const platform::Class cls = view->getClass();
  const auto is = [cls](platform::Class kind) { return cls->isSubclassOf(kind); };
  if (is(uikit::UINavigationItem) || is(uikit::UIBarButtonItem)) {
    return ask(view, &platform::UITitledItem::title).value_or("");
  }
  if (is(uikit::UITextView)) return ask(view, &platform::UITextView::textViewText).value_or("");
  if (is(uikit::UITableViewCell)) {
    return ask(view, &platform::UITableViewCell::cellText).value_or("");
  }
  if (is(uikit::UITabBarItem)) return ask(view, &platform::UITitledItem::title).value_or("");
  if (is(uikit::UISegmentedControl)) return view->accessibilityValue().value_or("");
  return std::nullopt;
}

}  // namespace

std::string getUIViewClassName(const UIViewRef& view) {
  return view->getClass()->name();
}

std::string getUIViewAccesibilityId(const UIViewRef& view) {
  return view->accessibilityIdentifier().value_or("");
}

std::string getUIViewAccesibilityLanguage(const UIViewRef& view) {
  return view->accessibilityLanguage().value_or("");
}

std::string getUIViewAccesibilityLabel(const UIViewRef& view) {
  if (Text value = view->accessibilityValue()) return *std::move(value);
  if (Text label = view->accessibilityLabel()) return *std::move(label);
  return view->accessibilityHint().value_or("");
}

long getUIViewTag(const UIViewRef& view) {
  return view->tag();
}

std::string getUIViewText(const UIViewRef& view) {
  if (view->isKindOfClass(uikit::UILabel)) {
    return ask(view, &platform::UILabel::labelText).value_or("");
  }
  if (view->isKindOfClass(uikit::UIButton)) {
    return ask(view, &platform::UIButton::currentTitle).value_or("");
  }
  if (view->isKindOfClass(uikit::UITextField)) {
    return ask(view, &platform::UITextField::placeholder).value_or("");
  }
  if (Text plain = textOfPlainKind(view)) return *std::move(plain);
  const UIViewRef superview = view->superview();
  if (isInSegmentedControl(superview)) return selectedSegmentTitle(superview).value_or("");
  return getUIViewAccesibilityLabel(view);
}

std::string getUIViewTextForPlayBack(const UIViewRef& view) {
  const UIViewRef superview = view->superview();
  if (superview && superview->isKindOfClass(uikit::UITextView)) {
    return ask(superview, &platform::UITextView::textViewText).value_or("");
  }
  if (view->isKindOfClass(uikit::UILabel)) {
    if (Text label = ask(view, &platform::UILabel::labelText)) return *std::move(label);
  }
  if (view->isKindOfClass(uikit::UIButton)) {
    if (Text title = ask(view, &platform::UIButton::currentTitle)) return *std::move(title);
  }
  if (view->isKindOfClass(uikit::UITextField)) {
    const auto* const field = kindOf<platform::UITextField>(view);
    return field ? shownText(*field) : std::string();
  }
  if (Text plain = textOfPlainKind(view)) return *std::move(plain);
  if (isInSegmentedControl(superview)) return allTitles(superview);
  return getUIViewAccesibilityLabel(view);
}

std::string getUIViewXpath(const UIViewRef&) {
  return {};
}

ElementProperties createElementProperties(const UIViewRef& view) {
  ElementProperties properties;
  properties.setClassName(getUIViewClassName(view));
  properties.setInnertext(getUIViewText(view));
  if (const std::string* const xpath = view->layer().valueForKey("tarni_xpath")) {
    properties.setXpath(*xpath);
  }
  return properties;
}

bool isOn(const UIViewRef& view) {
  const auto* const control = kindOf<platform::UISwitch>(view);
  if (!control) throw platform::unrecognizedSelector(view->getClass(), "isOn");
  return control->isOn();
}

MappedActionObject getActionAndDataAccordingToComponent(const UIViewRef& view) {
  if (view->isKindOfClass(uikit::UISwitch)) platform::NSLog("********SWITCH FOUND");
  return mappedAction(view);
}

MappedActionObject mappedAction(const UIViewRef& view) {
  const auto is = [&view](platform::Class kind) { return view->isKindOfClass(kind); };
  MappedActionObject action;
  action.setActionName("Click");
  if (is(uikit::UISwitch) || classNameContains(view, "switch")) {
    try {
      action.setActionName(isOn(view) ? "Mobile_SelectSwitch" : "Mobile_DeSelectSwitch");
    } catch (const platform::NSException&) {
      // A view that is a switch by its name only is clicked.
    }
  } else if (is(uikit::UIButton)) {
    action.setActionName("ClickButton");
  } else if (is(uikit::UIImage) || is(uikit::UIImageView)) {
    action.setActionName("ClickImage");
  }
  return action;
}

}  // namespace tarni::Utilities
