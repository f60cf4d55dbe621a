#include "agent/session/screen/Description.h"

#include "agent/elements/ViewKinds.h"
#include "agent/session/screen/Elements.h"
#include "platform/Foundation/Characters.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"
#include "platform/UIKit/UIItems.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni::session {

namespace uikit = platform::uikit;
using platform::UIViewRef;

namespace {

using Text = std::optional<std::string>;

// A dot for each character.
std::string masked(const std::string& text) {
  std::string dots;
  for (const char byte : text) {
    if (!platform::isInsideCharacter(byte)) dots += "•";
  }
  return dots;
}

// What a secure field holds is told to nobody.
Text textOfField(const UIViewRef& view) {
  const auto* const field = kindOf<platform::UITextField>(view);
  if (!field) return std::nullopt;
  return isSecure(view) ? masked(field->text()) : field->text();
}

// The kinds that show a text of their own, most common first. Null for all others.
Text textOfKind(const UIViewRef& view) {
  const platform::Class cls = view->getClass();
  const auto is = [cls](platform::Class kind) { return cls->isSubclassOf(kind); };
  if (is(uikit::UILabel)) return ask(view, &platform::UILabel::labelText);
  if (is(uikit::UIButton)) return ask(view, &platform::UIButton::currentTitle);
  if (is(uikit::UITextField)) return textOfField(view);
  if (is(uikit::UITextView)) return ask(view, &platform::UITextView::textViewText);
  if (is(uikit::UITableViewCell)) return ask(view, &platform::UITableViewCell::cellText);
  if (is(uikit::UINavigationItem) || is(uikit::UIBarItem)) {
    return ask(view, &platform::UITitledItem::title);
  }
  if (is(uikit::UISegmentedControl)) return selectedSegmentTitle(view);
  return std::nullopt;
}

void describeWindow(const UIViewRef& view, JsonText& text) {
  const auto* const window = kindOf<platform::UIWindow>(view);
  if (!window) return;
  text.add("title", window->windowTitle());
  text.add("modal", window->isModal());
  text.add("popup", window->isPopup());
}

void describeItems(const UIViewRef& view, JsonText& text) {
  if (const auto* const items = kindOf<platform::UIItems>(view)) {
    text.add("rows", items->numberOfRows());
    text.add("columns", items->numberOfColumns());
  } else if (const auto* const cell = kindOf<platform::UIItemCell>(view)) {
    const platform::ItemPlace place = cell->place();
    text.add("row", place.row);
    text.add("column", place.column);
  }
}

}  // namespace

std::optional<std::string> textOf(const UIViewRef& view) {
  if (Text own = textOfKind(view)) return own;
  if (const auto* const control = kindOf<platform::UIValueControl>(view)) {
    return control->currentValue();
  }
  if (Text value = view->accessibilityValue()) return value;
  return view->accessibilityLabel();
}

// What has no other name is called by its text.
std::optional<std::string> labelOf(const UIViewRef& view) {
  Text label = view->accessibilityLabel();
  if (label && isSecure(view) && *label == kindOf<platform::UITextField>(view)->text()) return {};
  return label;
}

std::optional<std::string> titleOfWindow(const UIViewRef& view) {
  const platform::UIWindowRef window = view->window();
  const auto* const titled = kindOf<platform::UIWindow>(window);
  return titled ? titled->windowTitle() : std::nullopt;
}

std::optional<std::string> placeholderOf(const UIViewRef& view) {
  if (!view->isKindOfClass(uikit::UITextField)) return std::nullopt;
  return ask(view, &platform::UITextField::placeholder);
}

std::optional<bool> isChecked(const UIViewRef& view) {
  if (!view->isKindOfClass(uikit::UISwitch)) return view->isChecked();
  const auto* const control = kindOf<platform::UISwitch>(view);
  return control ? std::optional(control->isOn()) : std::nullopt;
}

bool isEditable(const UIViewRef& view) {
  return view->isUserInteractionEnabled() &&
         (view->isKindOfClass(uikit::UITextField) || view->isKindOfClass(uikit::UITextView));
}

bool isFocused(const UIViewRef& view) {
  if (!view->isFirstResponder()) return false;
  const platform::UIWindowRef key = platform::current().application->keyWindow();
  return !key || view->window() == key;
}

void describe(const UIViewRef& view, Handle handle, const Place& place, JsonText& text) {
  text.add("element", static_cast<long>(handle));
  text.add("class", view->getClass()->name());
  text.add("text", textOf(view));
  text.add("identifier", view->accessibilityIdentifier());
  text.add("label", labelOf(view));
  const bool isSecret = isSecure(view);
  text.add("value", isSecret ? std::nullopt : view->accessibilityValue());
  text.add("hint", view->accessibilityHint());
  text.add("placeholder", placeholderOf(view));
  text.add("rect", place.rect);
  text.add("visible", place.isVisible);
  text.add("enabled", view->isUserInteractionEnabled());
  text.add("focused", isFocused(view));
  text.add("editable", isEditable(view));
  if (isSecret) text.add("secure", true);
  if (const auto checked = isChecked(view)) text.add("checked", *checked);
  if (const auto selected = view->isSelected()) text.add("selected", *selected);
  if (const auto expanded = view->isExpanded()) text.add("expanded", *expanded);
  if (view->isKindOfClass(uikit::UIWindow)) describeWindow(view, text);
  describeItems(view, text);
}

void describeWhole(const UIViewRef& view, JsonText& text) {
  const Place place = placeOf(view);
  describe(view, Elements::sharedInstance().handleOf(view), place, text);
  const platform::UIWindowRef window = view->window();
  platform::CGRect onScreen = place.rect;
  onScreen.origin.x += window->frame().minX();
  onScreen.origin.y += window->frame().minY();
  text.add("screenRect", onScreen);
  text.add("window", static_cast<long>(Elements::sharedInstance().handleOf(window)));
  text.key("kinds");
  text.open('[');
  for (platform::Class kind = view->getClass(); kind; kind = kind->superclass()) {
    text.item(kind->name());
  }
  text.close(']');
}

std::string_view descriptionInWords() {
  return "| Member | |\n"
         "|---|---|\n"
         "| `element` | its handle |\n"
         "| `class` | the name of its class |\n"
         "| `text` | what it shows now: of a field what was typed, of a control its value |\n"
         "| `identifier`, `label`, `value`, `hint` | as accessibility has them |\n"
         "| `placeholder` | of a text field |\n"
         "| `rect` | x, y, width, height in points of its window |\n"
         "| `visible` | neither hidden nor clipped away; what covers it does not count |\n"
         "| `enabled`, `editable` | |\n"
         "| `focused` | it has the focus, in the window that has the keyboard |\n"
         "| `secure` | true for a field that does not show what is typed: its text is dots here, "
         "too |\n"
         "| `checked` | of a switch, a check box, a radio button, a button or a menu entry that "
         "stays down |\n"
         "| `selected` | of a row, a cell or a tab |\n"
         "| `expanded` | of a node of a tree |\n"
         "| `title`, `modal`, `popup` | of a window |\n"
         "| `rows`, `columns` | of a list, a table or a tree, at its top level |\n"
         "| `row`, `column` | of a cell |\n"
         "| `parent`, `index` | in a tree: the handle above it, and its place there |\n"
         "| `screenRect`, `window`, `kinds` | of `element.describe` alone: its rectangle on the "
         "screen, its window's handle, the names of its class and of all that it is a kind of |\n"
         "\n"
         "What has no text, no value and so on lacks the member. An element of a page has `page`, "
         "the handle of its web view, a `class` that is its tag, and neither `kinds` nor "
         "`screenRect`.\n";
}

}  // namespace tarni::session
