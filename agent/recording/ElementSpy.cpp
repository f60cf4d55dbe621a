#include "agent/recording/ElementSpy.h"

#include <nlohmann/json.hpp>

#include "agent/Queue/RecorderQueue.h"
#include "agent/core/state/MainThread.h"
#include "agent/core/state/Utilities_Text.h"
#include "agent/elements/UIViewStorage.h"
#include "agent/elements/UIView_Highlight.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/Utilities.h"
#include "agent/elements/WebViews.h"
#include "agent/elements/XpathManager.h"
#include "agent/recording/MainRecorderAction.h"
#include "agent/recording/TouchedView.h"
#include "platform/Platform.h"

namespace tarni {

using nlohmann::ordered_json;
using platform::CGPoint;
using platform::CGRect;
using platform::UIViewRef;

namespace {

// The foremost view at the point; the touched view when there is none or when it is one that is
// never looked into. The walk gives all of them their identities.
UIViewRef selectionAt(const UIViewRef& touchedView, CGPoint point) {
  const std::shared_ptr<void> still = platform::current().application->holdStill();
  UIViewsManager manager;
  const std::vector<UIViewRef>& views = manager.GetAllViews(touchedView, true);
  if (takesTouchesWhole(touchedView)) return touchedView;
  const UIViewRef foremost = foremostAt(views, touchedView, point);
  return foremost ? foremost : touchedView;
}

std::string rounded(double value) {
  return Utilities::decimalText(value, 0);
}

void addParentProperties(MainRecorderAction& spied, const UIViewRef& superview) {
  if (!superview) return;
  const CGRect bounds = superview->bounds();
  const std::string className = Utilities::getUIViewClassName(superview);
  spied.addParentProperty("title", className);
  spied.addParentProperty("class", className);
  spied.addParentProperty("id", Utilities::getUIViewAccesibilityId(superview));
  spied.addParentProperty("label", Utilities::getUIViewAccesibilityLabel(superview));
  spied.addParentProperty("X", rounded(bounds.origin.x));
  spied.addParentProperty("Y", rounded(bounds.origin.y));
  spied.addParentProperty("height", rounded(bounds.size.height));
  spied.addParentProperty("width", rounded(bounds.size.width));
}

}  // namespace

bool ElementSpy::createSpyHierarchy(const UIViewRef& touchedView, CGPoint touchPoint) {
  assertMainThread();
  if (!touchedView) return false;
  const UIViewRef selection = selectionAt(touchedView, touchPoint);
  Highlight::highlightView(selection);
  // The page scripts describe what is in a page.
  if (isInWebView(selection)) return false;
  // It and its ancestors, without the topmost view.
  UIViewStorage& storage = UIViewStorage::sharedObject();
  storage.setCount(0);
  ordered_json hierarchy = ordered_json::array();
  UIViewRef superview;
  for (UIViewRef view = selection; (superview = view->superview()); view = superview) {
    storage.setCount(storage.count() + 1);
    hierarchy.push_back(createSpyProperties(view));
    storage.registerView(view);
  }
  RecorderQueue::get().enqueue(std::move(hierarchy));
  return true;
}

ordered_json ElementSpy::createSpyProperties(const UIViewRef& view) const {
  const CGRect bounds = view->bounds();
  const std::string className = Utilities::getUIViewClassName(view);
  const std::string text = Utilities::getUIViewText(view);
  MainRecorderAction spied;
  spied.addObjectProperty("tagName", className);
  spied.addObjectProperty("class", className);
  spied.addObjectProperty("id", Utilities::getUIViewAccesibilityId(view));
  spied.addObjectProperty("label", Utilities::getUIViewAccesibilityLabel(view));
  spied.addObjectProperty("sahiText", text);
  spied.addObjectProperty("name", text);
  spied.addObjectProperty("mode", "native");
  spied.addObjectProperty("logicalname", getLogicalNameOfElement(view));
  spied.addObjectProperty("xpath:position",
                          XpathManager::sharedInstance().getPositionXpathOfUIView(view));
  spied.addObjectProperty("X", rounded(bounds.origin.x));
  spied.addObjectProperty("Y", rounded(bounds.origin.y));
  spied.addObjectProperty("height", rounded(bounds.size.height));
  spied.addObjectProperty("width", rounded(bounds.size.width));
  addParentProperties(spied, view->superview());
  return spied.CreateSpyData();
}

std::string ElementSpy::getLogicalNameOfElement(const UIViewRef& view) const {
  if (std::string text = Utilities::getUIViewText(view); !text.empty()) return text;
  if (std::string id = Utilities::getUIViewAccesibilityId(view); !id.empty()) return id;
  return Utilities::getUIViewClassName(view);
}

}  // namespace tarni
