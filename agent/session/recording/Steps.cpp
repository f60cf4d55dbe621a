#include "agent/session/recording/Steps.h"

#include <chrono>
#include <cmath>

#include "agent/elements/ViewKinds.h"
#include "agent/session/input/Keys.h"
#include "agent/session/protocol/JsonText.h"
#include "agent/session/screen/Description.h"
#include "agent/session/screen/Locators.h"
#include "agent/session/screen/Pages.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni::session {

using platform::CGPoint;
using platform::UIViewRef;

namespace {

// Of the clock on which the platform tells the time of events.
double sinceEpoch(double uptime) {
  using namespace std::chrono;
  const double now = duration<double>(system_clock::now().time_since_epoch()).count();
  return (now - platform::current().processInfo->systemUptime() + uptime) * 1000;
}

bool overlap(double low, double high, double otherLow, double otherHigh) {
  return low < otherHigh && otherLow < high;
}

// How far the label is to the left of the view, in its row, or above it; endless for any other.
double wayTo(const platform::CGRect& label, const platform::CGRect& own) {
  const double left = own.minX() - label.maxX();
  const double above = own.minY() - label.maxY();
  if (left >= 0 && overlap(label.minY(), label.maxY(), own.minY(), own.maxY())) return left;
  if (above >= 0 && overlap(label.minX(), label.maxX(), own.minX(), own.maxX())) return above;
  return INFINITY;
}

// Of the view's siblings the nearest such label.
std::optional<std::string> labelNear(const UIViewRef& view) {
  const UIViewRef parent = view->superview();
  if (!parent) return std::nullopt;
  std::optional<std::string> nearest;
  double least = INFINITY;
  for (const UIViewRef& sibling : parent->subviews()) {
    if (!sibling->isKindOfClass(platform::uikit::UILabel) || sibling->isHidden()) continue;
    const double way = wayTo(sibling->frame(), view->frame());
    if (way >= least) continue;
    least = way;
    nearest = ask(sibling, &platform::UILabel::labelText);
  }
  return nearest;
}

std::optional<std::string> groupOf(const UIViewRef& view) {
  const UIViewRef group = nearestAround(view, [](const UIViewRef& outer) {
    return !outer->accessibilityLabel().value_or("").empty();
  });
  return group ? group->accessibilityLabel() : std::nullopt;
}

void describeSurroundings(const UIViewRef& view, JsonText& text) {
  text.key("near");
  text.open('{');
  text.add("label", labelNear(view));
  text.add("group", groupOf(view));
  text.add("window", titleOfWindow(view));
  text.close('}');
}

// An object.
Json elementOf(const Act& act) {
  Json element = act.element ? Json::parse(act.element->text, nullptr, false) : Json::object();
  return element.is_object() ? element : Json::object();
}

// By which the secret is filled in when the step is played.
std::string secretOf(const Act& act) {
  const Json element = elementOf(act);
  for (const char* const member : {"identifier", "label", "placeholder"}) {
    if (element.contains(member)) return element[member].get<std::string>();
  }
  return "secret";
}

// A state before a text, which mostly is the name of what has the state.
void describeCheck(const Act& act, JsonText& text) {
  const Json element = elementOf(act);
  const auto shown = element.value("text", "");
  if (element.contains("checked")) {
    text.add("is", element["checked"] == true ? "checked" : "unchecked");
  } else if (!shown.empty() && !element.contains("secure")) {
    text.add("textIs", shown);
  } else {
    text.add("is", "visible");
  }
}

void write(const CGPoint& point, JsonText& text) {
  text.open('{');
  text.add("x", point.x);
  text.add("y", point.y);
  text.close('}');
}

void add(JsonText& text, std::string_view name, const std::optional<CGPoint>& point) {
  if (!point) return;
  text.key(name);
  write(*point, text);
}

void add(JsonText& text, std::string_view name, const Portrait& portrait) {
  if (!portrait) return;
  text.key(name);
  text.raw(portrait->text);
}

// From the element's own corner, when it stands in a web view.
std::optional<CGPoint> inside(const std::optional<CGPoint>& point, const Portrait& portrait) {
  if (!point || !portrait || !portrait->inPage) return point;
  const CGPoint& corner = portrait->inPage->corner;
  return CGPoint{point->x - corner.x, point->y - corner.y};
}

void addIfAny(JsonText& text, std::string_view name, const std::string& value) {
  if (!value.empty()) text.add(name, value);
}

void describePointer(const Act& act, JsonText& text) {
  if (act.button) text.add("button", nameOf(*act.button));
  if (act.count > 0) text.add("count", static_cast<long>(act.count));
  addIfAny(text, "modifiers", act.modifiers);
  add(text, "at", inside(act.at, act.element));
  if (act.kind == acts::kDrag) {
    text.key("way");
    text.open('[');
    for (const CGPoint& point : act.way) write(point, text);
    text.close(']');
    add(text, "target", act.target);
    add(text, "targetAt", inside(act.targetAt, act.target));
  }
  if (act.kind == acts::kWheel) {
    text.add("right", act.notches.x);
    text.add("down", act.notches.y);
  }
  if (act.kind != acts::kMenu) return;
  text.key("path");
  text.open('[');
  for (const Portrait& entry : act.path) text.raw(entry ? std::string_view(entry->text) : "null");
  text.close(']');
}

void describeOutcome(const Act& act, JsonText& text) {
  addIfAny(text, "key", act.key);
  if (act.isSecret) {
    text.add("secret", secretOf(act));
  } else if (act.kind == acts::kType) {
    text.add("text", act.text);
  }
  text.add("value", act.value);
  if (act.choice) text.add("choice", static_cast<long>(*act.choice));
  if (act.state) text.add(act.kind == acts::kExpand ? "expanded" : "checked", *act.state);
  if (!act.size) return;
  text.add("width", act.size->width);
  text.add("height", act.size->height);
}

}  // namespace

std::shared_ptr<PortraitText> portraitOf(const UIViewRef& view, ReachedBy way) {
  JsonText text;
  text.open('{');
  describeWhole(view, text);
  describeSurroundings(view, text);
  text.key("locators");
  text.raw(written(locatorsOf(view, way)));
  text.close('}');
  return std::make_shared<PortraitText>(PortraitText{text.take()});
}

platform::Task<void> portrayInPage(UIViewRef webView, std::optional<CGPoint> place,
                                   std::shared_ptr<PortraitText> portrait) {
  const std::optional<PagePortrait> told = co_await portraitIn(webView, place);
  if (!told) co_return;
  JsonText text;
  text.open('{');
  if (!told->near.empty()) text.add("label", told->near);
  text.add("window", titleOfWindow(webView));
  text.close('}');
  std::string whole = told->node.description;
  whole.pop_back();
  whole += ",\"near\":" + text.take() + ",\"locators\":" + told->locators + "}";
  portrait->text = std::move(whole);
  portrait->inPage = {told->corner, told->takesText, told->isSecure};
}

void settleText(Act& act, const Act& click) {
  if (act.kind != acts::kType || !act.element) return;
  const auto takesText = [](const Act& one) {
    return one.element && one.element->inPage && one.element->inPage->takesText;
  };
  if (click.order + 1 == act.order && takesText(click)) act.element = click.element;
  const auto& inPage = act.element->inPage;
  if (act.mayBeKeys && !takesText(act) && !act.key.empty()) {
    act.kind = acts::kKey;
    act.count = 1;
    act.text.clear();
    return;
  }
  act.key.clear();
  act.isSecret = act.isSecret || (inPage ? inPage->isSecure : act.mayBeKeys);
  if (act.isSecret) act.text.clear();
}

std::string stepOf(const Act& act) {
  JsonText text;
  text.open('{');
  text.add("order", act.order);
  text.add("time", std::lround(sinceEpoch(act.time)));
  if (act.duration > 0) text.add("durationMs", std::lround(act.duration * 1000));
  text.add("act", act.kind);
  add(text, "element", act.element);
  describePointer(act, text);
  describeOutcome(act, text);
  if (act.kind == acts::kCheck) describeCheck(act, text);
  text.close('}');
  return text.take();
}

std::string_view stepInWords() {
  return R"(| Member | |
|---|---|
| `order` | from 1; a step that comes again with the same number has grown (a text, a second click, what came of it) and takes the place of the one before |
| `time`, `durationMs` | of the act's first event, in milliseconds since 1970; to the last |
| `act` | `click`, `longPress`, `drag`, `wheel`, `hover` (that opened something), `key`, `type`, `choose` (the value of a control), `switch`, `expand`, `menu`, `resize`, `close`, `check` (nothing was done: it is to be so again) |
| `element` | its description, with `near` (`label`, `group`, `window`: the texts that stand there) and `locators` |
| `button`, `count` | of a click, a long press, a drag, a menu; a `count` of 2 is a double click |
| `modifiers` | the keys that were down, of these and of the wheel |
| `at` | where the pointer was, from the element's upper left corner |
| `way` | of a drag: where it went, from its beginning |
| `target`, `targetAt` | of a drag that ends over another element: that one, and where |
| `right`, `down` | of the wheel, in notches |
| `path` | of a menu: the descriptions of its entries, from the first |
| `key` | with its modifiers, `Control+s`; `count` times |
| `text` | as it was typed |
| `secret` | in place of the text: what is typed is not shown; the name of its field |
| `value` | that was chosen, that the field holds now |
| `choice` | of a value that was chosen from a list: its place there, from 0 |
| `checked`, `expanded` | what came of it |
| `width`, `height` | of a window |
| `is`, `textIs` | of a check: `checked`, `unchecked` or `visible`; the text that it shows |

`locators` are the ways to find the element again, best first, as they were at that moment: each has
`find`, the parameters of `element.find`, `matches`, how many elements that fitted, and `ms`, how long
the walk took that counted them. What fits the element alone stands first, its position behind all other
such ways.
)";
}

}  // namespace tarni::session
