#include "agent/acts/Acts.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "agent/elements/ViewKinds.h"
#include "agent/elements/WebViews.h"
#include "platform/Foundation/Characters.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"
#include "platform/UIKit/Classes.h"
#include "platform/UIKit/UIControls.h"
#include "platform/UIKit/UIItems.h"
#include "platform/UIKit/UIWindow.h"

namespace tarni {

using platform::CGPoint;
using platform::InputEvent;
using platform::InputKind;
using platform::UIViewRef;

namespace {

constexpr double kRest = 0.1;       // seconds without a further event
constexpr double kLongPress = 0.8;  // seconds
constexpr double kOneTurn = 1;      // seconds between turns of the wheel that are one act
constexpr double kOwnDoing = 0.5;   // seconds in which a window's size follows from an act
constexpr double kDragBegins = 10;  // points
constexpr double kNextOfWay = 8;    // points
constexpr std::size_t kLongestWay = 200;

double distance(CGPoint one, CGPoint other) {
  return std::hypot(one.x - other.x, one.y - other.y);
}

// A point of the view's window, from the view's upper left corner.
CGPoint fromCorner(const UIViewRef& view, CGPoint point) {
  const CGPoint inside = view->convertPointFromWindow(point);
  return {inside.x - view->bounds().minX(), inside.y - view->bounds().minY()};
}

std::optional<CGPoint> placeOf(const InputEvent& event, const UIViewRef& view) {
  const bool isOfPointer = event.kind == InputKind::Press || event.kind == InputKind::Wheel;
  return isOfPointer ? std::optional(fromCorner(view, event.point)) : std::nullopt;
}

std::string chordOf(unsigned modifiers, std::string_view key) {
  constexpr std::pair<unsigned, std::string_view> kNames[] = {{platform::kControl, "Control"},
                                                              {platform::kAlt, "Alt"},
                                                              {platform::kShift, "Shift"},
                                                              {platform::kMeta, "Meta"}};
  std::string chord;
  for (const auto& [bit, name] : kNames) {
    if (modifiers & bit) chord.append(chord.empty() ? "" : "+").append(name);
  }
  if (!key.empty()) chord.append(chord.empty() ? "" : "+").append(key);
  return chord;
}

bool isModifier(std::string_view key) {
  constexpr std::string_view kKeys[] = {"Shift", "Control",  "Alt",     "AltGraph",
                                        "Meta",  "CapsLock", "NumLock", "ScrollLock"};
  return std::ranges::find(kKeys, key) != std::end(kKeys);
}

bool isPrintable(std::string_view text) {
  const auto isControl = [](char byte) { return (byte >= 0 && byte < ' ') || byte == '\x7f'; };
  return !text.empty() && std::ranges::none_of(text, isControl);
}

// By kind, and with all that lies in it: what has the keyboard may be of an application's own class
// of web views, or a part inside. `isInWebView` goes by names: it says where the page tells the
// steps.
bool isInPage(UIViewRef view) {
  while (view && !isWebView(view)) view = view->superview();
  return view != nullptr;
}

// A key of a list goes to its search or edits a cell: it is a key there, and a text in the cell. A
// page that is busy says late that it takes text.
bool isTyping(const InputEvent& event) {
  if (event.kind == InputKind::Text) return true;
  const bool isPlain = !(event.modifiers & (platform::kControl | platform::kAlt | platform::kMeta));
  if (!isPlain || !isPrintable(event.text)) return false;
  return event.takesText ? !kindOf<platform::UIItems>(event.view) : isInPage(event.view);
}

bool isEntryOfMenu(const UIViewRef& view) {
  return view && view->getClass()->name() == "UIActionButton";
}

bool isInPopup(const UIViewRef& view) {
  const auto* const window = kindOf<platform::UIWindow>(view->window());
  return window && window->isPopup();
}

// A popup, or what stands for one in the same window.
bool isAmongChoices(const UIViewRef& view) {
  return isInPopup(view) || view->isKindOfClass(platform::uikit::UITableViewCell);
}

}  // namespace

bool Acts::start() {
  isStarted_ = platform::current().application->setInputObserver(this);
  return isStarted_;
}

void Acts::stop() {
  if (!std::exchange(isStarted_, false)) return;
  platform::current().application->setInputObserver(nullptr);
  finish();
  open_.reset();
  before_.reset();
  press_ = {};
}

void Acts::finish() {
  settle();
  tell();
}

void Acts::willHandle(const InputEvent& event) noexcept {
  platform::runGuarded("recording an event", [&] { handle(event); });
}

void Acts::handle(const InputEvent& event) {
  if (event.kind != InputKind::KeyUp && event.kind != InputKind::Move) loneModifier_.clear();
  switch (event.kind) {
    case InputKind::Press:
      return press(event);
    case InputKind::Move:
      return move(event);
    case InputKind::Release:
      return release(event);
    case InputKind::Wheel:
      return wheel(event);
    case InputKind::KeyDown:
      return keyDown(event);
    case InputKind::KeyUp:
      return keyUp(event);
    case InputKind::Text:
      return type(event);
    case InputKind::Pointed:
      if (addToMenu(event.view)) return tellAtRest();
      begin(acts::kHover, event, event.view);
      return tellAtRest();
    case InputKind::Resized:
      return resize(event);
    case InputKind::Closed:
      begin(acts::kClose, event, event.window);
      return tell();
  }
}

// --- the pointer

void Acts::press(const InputEvent& event) {
  settle();
  const UIViewRef view = event.view ? event.view : event.window;
  if (!view) return;
  press_ = {true, false, event.button, event.window, event.point};
  if (addToMenu(view)) return;
  if (event.clicks > 1 && isOpen(acts::kClick, view) && open_->act.button == event.button) {
    open_->act.count = event.clicks;
    return;
  }
  const bool isMenu = isEntryOfMenu(view) && event.button == platform::PointerButton::Left;
  Act& act = begin(isMenu ? acts::kMenu : acts::kClick, event, view);
  if (isMenu) act.path.push_back(act.element);
  act.button = event.button;
  act.count = 1;
  act.modifiers = chordOf(event.modifiers, {});
  act.at = fromCorner(view, event.point);
}

void Acts::move(const InputEvent& event) {
  if (!press_.isDown || !open_) return;
  const CGPoint point = platform::convertPoint(event.point, event.window, press_.window.lock());
  press_.isDrag = press_.isDrag || distance(point, press_.point) > kDragBegins;
  std::vector<CGPoint>& way = open_->act.way;
  const CGPoint step{point.x - press_.point.x, point.y - press_.point.y};
  const CGPoint before = way.empty() ? CGPoint{} : way.back();
  if (distance(step, before) >= kNextOfWay && way.size() < kLongestWay) way.push_back(step);
}

void Acts::release(const InputEvent& event) {
  if (!press_.isDown || event.button != press_.button) return;
  press_.isDown = false;
  if (!open_) return;
  Act& act = open_->act;
  lastsTo(event.time);
  const bool isClick = act.kind == acts::kClick;
  if (isClick && press_.isDrag) {
    const CGPoint end = platform::convertPoint(event.point, event.window, press_.window.lock());
    act.kind = acts::kDrag;
    act.way.push_back({end.x - press_.point.x, end.y - press_.point.y});
    if (event.view && event.view != open_->view.lock()) {
      act.targetAt = fromCorner(event.view, event.point);
      act.target = portray_(event.view, act.targetAt);
    }
  } else {
    act.way.clear();
    if (isClick && act.count == 1 && act.duration >= kLongPress) act.kind = acts::kLongPress;
  }
  tellAtRest();
}

void Acts::wheel(const InputEvent& event) {
  const UIViewRef view = event.view ? event.view : event.window;
  if (!goesOnTurning(event)) {
    settle();
    begin(acts::kWheel, event, view).modifiers = chordOf(event.modifiers, {});
    press_ = {.window = event.window, .point = event.point};
  }
  Act& act = open_->act;
  act.notches.x += event.notches.x;
  act.notches.y += event.notches.y;
  lastsTo(event.time);
  tellAtRest();
}

// The way it went, with the pointer where it was: what lies below has moved by it.
bool Acts::goesOnTurning(const InputEvent& event) const {
  if (!open_ || open_->act.kind != acts::kWheel || event.time - open_->last >= kOneTurn)
    return false;
  const CGPoint& before = open_->act.notches;
  const bool isSameWay = before.x * event.notches.x >= 0 && before.y * event.notches.y >= 0;
  return isSameWay && event.window == press_.window.lock() &&
         distance(event.point, press_.point) < kDragBegins;
}

// An entry that is pressed or opened by the pointer's rest after the one above it: one act. False
// for one that begins an act of its own.
bool Acts::addToMenu(const UIViewRef& entry) {
  if (!open_ || open_->act.kind != acts::kMenu || !isEntryOfMenu(entry) || !isInPopup(entry)) {
    return false;
  }
  if (open_->view.lock() == entry) return true;
  open_->view = entry;
  open_->act.element = portray_(entry, std::nullopt);
  open_->act.path.push_back(open_->act.element);
  return true;
}

// --- the keyboard

void Acts::keyDown(const InputEvent& event) {
  if (isModifier(event.key)) {
    if (event.key == "Alt" || event.key == "Meta") loneModifier_ = event.key;
    return;
  }
  if (!checkKey_.empty() && chordOf(event.modifiers, event.key) == checkKey_) return check(event);
  if (isTyping(event)) return type(event);
  const bool isPlain = event.modifiers == 0;
  if (isPlain && event.key == "Backspace" && isOpen(acts::kType, event.view) &&
      !open_->act.text.empty()) {
    std::string& text = open_->act.text;
    while (platform::isInsideCharacter(text.back())) text.pop_back();
    text.pop_back();
    open_->act.key.clear();
    return tellAtRest();
  }
  // What a character's name says already.
  const bool isShifted = isPrintable(event.text);
  const unsigned modifiers = isShifted ? event.modifiers & ~platform::kShift : event.modifiers;
  if (!event.key.empty()) pressKey(event, chordOf(modifiers, event.key));
}

void Acts::type(const InputEvent& event) {
  const bool isCertain = event.takesText || event.kind == InputKind::Text;
  const bool goesOn = isOpen(acts::kType, event.view);
  if (!goesOn) {
    settle();
    Act& act = begin(acts::kType, event, event.view);
    act.isSecret = isSecure(event.view);
    act.mayBeKeys = !isCertain;
  }
  Act& act = open_->act;
  act.key = !goesOn && act.mayBeKeys ? event.key : "";
  act.mayBeKeys = act.mayBeKeys && !isCertain;
  act.isSecret = act.isSecret || event.isSecret;
  act.text = act.isSecret ? "" : act.text + event.text;
  lastsTo(event.time);
  tellAtRest();
}

void Acts::pressKey(const InputEvent& event, const std::string& chord) {
  if (event.isRepeat && isOpen(acts::kKey, event.view) && open_->act.key == chord) {
    ++open_->act.count;
    open_->last = event.time;
    return tellAtRest();
  }
  settle();
  Act& act = begin(acts::kKey, event, event.view);
  act.key = chord;
  act.count = 1;
  tellAtRest();
}

// A modifier that goes down and up by itself opens the menu bar, the desktop's menu.
void Acts::keyUp(const InputEvent& event) {
  if (loneModifier_.empty() || event.key != loneModifier_) return;
  const std::string key = std::exchange(loneModifier_, {});
  pressKey(event, key);
}

void Acts::check(const InputEvent& event) {
  const UIViewRef view = event.window ? event.window->hitTest(event.point) : nullptr;
  if (!view) return;
  settle();
  InputEvent pointed = event;
  pointed.kind = InputKind::Press;
  begin(acts::kCheck, pointed, view);
  tell();
}

// --- windows

void Acts::resize(const InputEvent& event) {
  const bool goesOn = isOpen(acts::kResize, event.window);
  if (!goesOn && open_ && event.time - open_->last < kOwnDoing) return;
  if (!goesOn) begin(acts::kResize, event, event.window);
  lastsTo(event.time);
  tellAtRest();
}

// --- the open act

bool Acts::isOpen(std::string_view kind, const UIViewRef& view) const {
  return open_ && open_->act.kind == kind && open_->view.lock() == view;
}

void Acts::lastsTo(double time) {
  open_->last = time;
  open_->act.duration = time - open_->act.time;
}

Act& Acts::begin(std::string_view kind, const InputEvent& event, const UIViewRef& view) {
  finish();
  before_.reset();
  if (open_ && open_->act.kind == acts::kClick && open_->outcome.control()) {
    before_ = {open_->act.order, open_->act.time, open_->outcome, open_->control};
  }
  open_ = Open{};
  open_->view = view;
  if (view && kind != acts::kType) open_->outcome = Outcome(view);
  const UIViewRef control = open_->outcome.control();
  if (control && control != view) open_->control = portray_(control, std::nullopt);
  open_->isAmongChoices = kind == acts::kClick && view && isAmongChoices(view);
  open_->last = event.time;
  Act& act = open_->act;
  act.order = ++orders_;
  act.time = event.time;
  act.kind = kind;
  act.element = view ? portray_(view, placeOf(event, view)) : nullptr;
  return act;
}

// What came of the act so far. A choice is one act with the click before that opened the choices.
void Acts::settle() {
  constexpr std::string_view kBringNothing[] = {acts::kType, acts::kMenu, acts::kResize,
                                                acts::kClose, acts::kCheck};
  if (!open_ || std::ranges::find(kBringNothing, open_->act.kind) != std::end(kBringNothing))
    return;
  Act act = open_->act;
  UIViewRef about = open_->outcome.apply(act);
  const bool mayBeChoice = act.kind == acts::kClick && open_->isAmongChoices && before_;
  if (mayBeChoice) before_->outcome.apply(act);
  if (mayBeChoice && act.kind == acts::kChoose) {
    about = before_->outcome.control();
    act.order = before_->order;
    act.time = before_->time;
    orders_ = act.order;
    open_->outcome = before_->outcome;
    open_->control = before_->control;
  }
  const Act& known = open_->act;
  if (act.kind == known.kind && act.value == known.value && act.choice == known.choice) return;
  if (about) {
    const bool isControl = open_->control && about == open_->outcome.control();
    act.element = isControl ? open_->control : portray_(about, std::nullopt);
    act.at.reset();
  }
  open_->act = std::move(act);
  open_->isTold = false;
}

void Acts::readText() {
  const UIViewRef view = open_->view.lock();
  if (!view || open_->act.isSecret) return;
  if (const auto* const field = kindOf<platform::UITextField>(view)) {
    open_->act.value = field->text();
  } else if (const auto* const control = kindOf<platform::UIValueControl>(view)) {
    open_->act.value = control->currentValue();
  }
}

void Acts::tell() {
  if (!open_ || std::exchange(open_->isTold, true)) return;
  if (open_->act.kind == acts::kType) readText();
  const UIViewRef view = open_->view.lock();
  if (open_->act.kind == acts::kResize && view) open_->act.size = view->bounds().size;
  tell_(open_->act);
}

void Acts::tellAtRest() {
  open_->isTold = false;
  if (std::exchange(isTellingPending_, true)) return;
  platform::current().dispatch->afterOnMain(kRest, [weak = std::weak_ptr<Acts*>(self_)] {
    if (const auto self = weak.lock()) (*self)->rest();
  });
}

void Acts::rest() {
  isTellingPending_ = false;
  if (!press_.isDown) finish();
}

}  // namespace tarni
