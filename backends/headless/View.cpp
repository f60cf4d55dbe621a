#include "backends/headless/View.h"

#include <algorithm>

#include "backends/headless/ChangeLog.h"
#include "backends/headless/drawing/Renderer.h"
#include "backends/headless/events/GestureRecognizer.h"
#include "backends/headless/events/SubviewIndex.h"
#include "backends/headless/views/Window.h"
#include "platform/Platform.h"

namespace tarni::headless {

using platform::CGAffineTransform;
using platform::CGPoint;
using platform::CGRect;
using platform::UIViewRef;

namespace {

constexpr double kMinimumTouchableAlpha = 0.01;

using KeyedViews = std::vector<std::pair<std::string, ViewRef>>;

ViewRef viewWithKey(const KeyedViews& views, std::string_view key) {
  const auto found = std::ranges::find(views, key, &KeyedViews::value_type::first);
  return found == views.end() ? nullptr : found->second;
}

void set(KeyedViews& views, std::string_view key, const ViewRef& view) {
  const auto found = std::ranges::find(views, key, &KeyedViews::value_type::first);
  if (found != views.end() && view) {
    found->second = view;
  } else if (found != views.end()) {
    views.erase(found);
  } else if (view) {
    views.emplace_back(key, view);
  }
}

bool takesTouch(const View& view, CGPoint point) {
  return !view.isHidden() && view.isUserInteractionEnabled() &&
         view.alpha() >= kMinimumTouchableAlpha && view.pointInside(point);
}

}  // namespace

struct View::Extras {
  std::optional<std::string> identifier;
  std::optional<std::string> language;
  std::optional<std::string> value;
  std::optional<std::string> label;
  std::optional<std::string> hint;
  KeyedViews keys;
  KeyedViews instanceVariables;
  std::vector<std::shared_ptr<GestureRecognizer>> recognizers;
  std::vector<platform::Class> recognizerClasses;
};

View::View(platform::Class cls) : class_(cls), layer_(*this) {}

// Takes the tree below apart level by level: destructors that call each other would use up the
// stack in a deep tree.
View::~View() {
  for (const auto& recognizer : recognizers()) recognizer->setView(nullptr);
  std::vector<UIViewRef> orphans = std::move(subviews_);
  while (!orphans.empty()) {
    const UIViewRef orphan = std::move(orphans.back());
    orphans.pop_back();
    auto& view = static_cast<View&>(*orphan);
    view.superview_ = nullptr;
    if (orphan.use_count() > 1) continue;
    std::ranges::move(view.subviews_, std::back_inserter(orphans));
    view.subviews_.clear();
  }
}

View::Extras& View::extras() {
  if (!extras_) extras_ = std::make_unique<Extras>();
  return *extras_;
}

void View::contentChanged() {
  if (window_) ChangeLog::sharedInstance().noteContent(weak_from_this().lock());
}

void View::structureChanged() const {
  if (window_) ChangeLog::sharedInstance().noteStructure();
}

// --- tree

UIViewRef View::superview() const {
  return superview_ ? superview_->weak_from_this().lock() : nullptr;
}

platform::UIWindowRef View::window() const {
  return window_ ? window_->weak_from_this().lock() : nullptr;
}

void View::addSubview(const ViewRef& view) {
  insertSubview(view, subviews_.size());
}

void View::insertSubview(const ViewRef& view, std::size_t index) {
  if (!view || view.get() == this || isBelow(*view)) return;
  if (view->superview_) view->detach();
  const auto place = static_cast<std::ptrdiff_t>(std::min(index, subviews_.size()));
  subviews_.insert(subviews_.begin() + place, view);
  view->superview_ = this;
  structureChanged();
  view->setWindowOfTree(window_);
}

// A view without subviews is above no other: to build a tree from its root downwards stays linear.
bool View::isBelow(const View& other) const {
  if (other.subviews_.empty()) return false;
  const View* ancestor = superview_;
  while (ancestor && ancestor != &other) ancestor = ancestor->superview_;
  return ancestor != nullptr;
}

void View::removeFromSuperview() {
  if (!superview_) return;
  const UIViewRef alive = shared_from_this();
  detach();
  setWindowOfTree(nullptr);
}

void View::removeAllSubviews() {
  structureChanged();
  const std::vector<UIViewRef> removed = std::exchange(subviews_, {});
  for (const UIViewRef& view : removed) {
    static_cast<View&>(*view).superview_ = nullptr;
    static_cast<View&>(*view).setWindowOfTree(nullptr);
  }
}

// The window stays as it was: the caller sets it, once, to what follows.
void View::detach() {
  structureChanged();
  auto& siblings = superview_->subviews_;
  const auto found = std::find_if(siblings.rbegin(), siblings.rend(),
                                  [this](const UIViewRef& view) { return view.get() == this; });
  superview_ = nullptr;
  if (found != siblings.rend()) siblings.erase(std::next(found).base());
}

// Focus goes first, because the application is told about it and may change the tree.
void View::setWindowOfTree(Window* window) {
  if (window_ && window_ != window) resignFirstResponderBelow();
  if (window_ == window) return;
  std::vector<View*> waiting{this};
  while (!waiting.empty()) {
    View* const view = waiting.back();
    waiting.pop_back();
    view->window_ = window;
    for (const UIViewRef& below : view->subviews_)
      waiting.push_back(static_cast<View*>(below.get()));
  }
}

void View::resignFirstResponderBelow() {
  View* const responder = window_->firstResponder_;
  for (const View* view = responder; view; view = view->superview_) {
    if (view != this) continue;
    responder->resignFirstResponder();
    return;
  }
}

// --- geometry

CGRect View::frame() const {
  if (!transform_.isIdentity()) return CGRectApplyAffineTransform(bounds_, transformToSuperview());
  const platform::CGSize size = bounds_.size;
  return {{center_.x - size.width / 2, center_.y - size.height / 2}, size};
}

CGPoint View::center() const {
  CGRect shown = bounds_;
  const auto isClippedAway = [&shown] { return shown.size.width <= 0 || shown.size.height <= 0; };
  const bool hasSize = !isClippedAway();
  for (const View* at = this; at; at = at->superview_) {
    if (at->isHidden()) return platform::kNowhere;
    if (at->clipsToBounds_) shown = platform::CGRectIntersection(shown, at->bounds_);
    if (hasSize && isClippedAway()) return platform::kNowhere;
    shown = CGRectApplyAffineTransform(shown, at->transformToSuperview());
  }
  return center_;
}

void View::setBounds(const CGRect& bounds) {
  if (bounds_ == bounds) return;
  setStructure(bounds_, bounds);
  layoutSubviews();
}

void View::setFrame(const CGRect& frame) {
  platform::CGSize size = frame.size;
  if (!transform_.isIdentity()) {
    size = CGRectApplyAffineTransform({{}, size}, transform_.inverted()).size;
  }
  setCenter({frame.midX(), frame.midY()});
  setBounds({bounds_.origin, size});
}

void View::setTransform(const CGAffineTransform& transform) {
  setStructure(transform_, transform);
}

CGAffineTransform View::transformToSuperview() const {
  return CGAffineTransform::translation(-bounds_.midX(), -bounds_.midY())
      .then(transform_)
      .then(CGAffineTransform::translation(center_.x, center_.y));
}

CGPoint View::convertPointToSuperview(CGPoint point) const {
  return transformToSuperview().apply(point);
}

CGPoint View::convertPointFromSuperview(CGPoint point) const {
  return transformToSuperview().inverted().apply(point);
}

CGPoint View::convertPointToWindow(CGPoint point) const {
  for (const View* view = this; view->superview_; view = view->superview_) {
    point = view->convertPointToSuperview(point);
  }
  return point;
}

CGPoint View::convertPointFromWindow(CGPoint point) const {
  CGAffineTransform toWindow;
  for (const View* view = this; view->superview_; view = view->superview_) {
    toWindow = toWindow.then(view->transformToSuperview());
  }
  return toWindow.inverted().apply(point);
}

// A view that takes the point gives a result for certain, itself at least: the search only ever
// goes down.
UIViewRef View::hitTest(CGPoint point) const {
  const std::shared_ptr<SubviewIndex> index = SubviewIndex::held();
  const View* hit = nullptr;
  for (const View* next = takesTouch(*this, point) ? this : nullptr; next;) {
    hit = next;
    next = nullptr;
    // Takes the point into the subview when that takes it.
    const auto enter = [&, in = hit](std::size_t position) {
      const View& candidate = in->child(position);
      if (candidate.isHidden() || !candidate.isUserInteractionEnabled()) return false;
      const CGPoint inside = candidate.convertPointFromSuperview(point);
      if (!takesTouch(candidate, inside)) return false;
      next = &candidate;
      point = inside;
      return true;
    };
    if (index) {
      index->placesIn(*hit).eachAt(point, enter);
    } else {
      for (std::size_t at = hit->subviews_.size(); at > 0 && !enter(at - 1);) --at;
    }
  }
  return hit ? const_cast<View*>(hit)->weak_from_this().lock() : nullptr;
}

// --- responder

bool View::isFirstResponder() const {
  return window_ && window_->firstResponder_ == this;
}

platform::Task<void> View::becomeFirstResponder() {
  focus();
  co_return;
}

bool View::focus() {
  if (!canBecomeFirstResponder() || !window_) return false;
  if (isFirstResponder()) return true;
  if (View* const previous = window_->firstResponder_) previous->resignFirstResponder();
  if (!window_) return false;
  window_->firstResponder_ = this;
  contentChanged();
  didBecomeFirstResponder();
  return true;
}

void View::resignFirstResponder() {
  if (!isFirstResponder()) return;
  window_->firstResponder_ = nullptr;
  contentChanged();
  didResignFirstResponder();
}

bool View::handleTouch(platform::UITouchPhase, platform::UITouch&) {
  return false;
}

// --- gestures

std::span<const platform::Class> View::gestureRecognizers() const {
  if (!extras_) return {};
  return extras_->recognizerClasses;
}

std::span<const std::shared_ptr<GestureRecognizer>> View::recognizers() const {
  if (!extras_) return {};
  return extras_->recognizers;
}

void View::addGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer) {
  extras().recognizers.push_back(recognizer);
  extras().recognizerClasses.push_back(recognizer->getClass());
  recognizer->setView(this);
}

void View::removeGestureRecognizer(const std::shared_ptr<GestureRecognizer>& recognizer) {
  auto& recognizers = extras().recognizers;
  const auto found = std::ranges::find(recognizers, recognizer);
  if (found == recognizers.end()) return;
  extras().recognizerClasses.erase(extras().recognizerClasses.begin() +
                                   (found - recognizers.begin()));
  recognizers.erase(found);
  recognizer->setView(nullptr);
}

// --- description

std::optional<std::string> View::accessibilityIdentifier() const {
  return extras_ ? extras_->identifier : std::nullopt;
}

std::optional<std::string> View::accessibilityLanguage() const {
  return extras_ ? extras_->language : std::nullopt;
}

std::optional<std::string> View::accessibilityValue() const {
  return extras_ ? extras_->value : std::nullopt;
}

std::optional<std::string> View::accessibilityLabel() const {
  return extras_ ? extras_->label : std::nullopt;
}

std::optional<std::string> View::accessibilityHint() const {
  return extras_ ? extras_->hint : std::nullopt;
}

void View::setAccessibilityIdentifier(std::optional<std::string> text) {
  setContent(extras().identifier, std::move(text));
}

void View::setAccessibilityLanguage(std::optional<std::string> text) {
  setContent(extras().language, std::move(text));
}

void View::setAccessibilityValue(std::optional<std::string> text) {
  setContent(extras().value, std::move(text));
}

void View::setAccessibilityLabel(std::optional<std::string> text) {
  setContent(extras().label, std::move(text));
}

void View::setAccessibilityHint(std::optional<std::string> text) {
  setContent(extras().hint, std::move(text));
}

UIViewRef View::valueForKey(std::string_view key) const {
  if (!extras_) return nullptr;
  if (ViewRef view = viewWithKey(extras_->keys, key)) return view;
  if (ViewRef view = viewWithKey(extras_->instanceVariables, key)) return view;
  const auto& variables = extras_->instanceVariables;
  const auto underscored = std::ranges::find_if(variables, [key](const auto& variable) {
    const std::string_view name = variable.first;
    return name.starts_with('_') && name.substr(1) == key;
  });
  return underscored == variables.end() ? nullptr : underscored->second;
}

UIViewRef View::instanceVariable(std::string_view name) const {
  return extras_ ? viewWithKey(extras_->instanceVariables, name) : nullptr;
}

void View::setValueForKey(const ViewRef& view, std::string_view key) {
  set(extras().keys, key, view);
}

void View::setInstanceVariable(const ViewRef& view, std::string_view name) {
  set(extras().instanceVariables, name, view);
}

// --- drawing

platform::Task<platform::UIImageRef> View::drawViewHierarchy() {
  co_return render(*this, platform::current().mainScreen->scale());
}

void View::drawContent(Canvas&) const {}

}  // namespace tarni::headless
