#include "agent/session/recording/Recording.h"

#include "agent/session/protocol/JsonRpc.h"
#include "agent/session/recording/Steps.h"
#include "agent/session/screen/Pages.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni::session {

using platform::CGPoint;
using platform::UIViewRef;

namespace {

// Seconds that a page has to say what is in it. A backend may give it up before.
constexpr double kPatience = 3;

bool isComplete(const Act& act) {
  const auto isKnown = [](const Portrait& portrait) { return !portrait || portrait->isComplete; };
  return isKnown(act.element) && isKnown(act.target);
}

// The web view that the view is a part of: it draws its page in one of its own. Null for none.
UIViewRef webViewAround(UIViewRef view) {
  while (view && !isPage(view)) view = view->superview();
  return view;
}

platform::Task<void> readyForPortraits(UIViewRef webView) {
  co_await portraitIn(std::move(webView), std::nullopt);
}

// From the upper left corner of `from`, then of `to`.
std::optional<CGPoint> converted(const std::optional<CGPoint>& place, const UIViewRef& from,
                                 const UIViewRef& to) {
  if (!place) return std::nullopt;
  const CGPoint own{from->bounds().minX() + place->x, from->bounds().minY() + place->y};
  const CGPoint other = platform::convertPoint(own, from, to);
  return CGPoint{other.x - to->bounds().minX(), other.y - to->bounds().minY()};
}

}  // namespace

Recording& Recording::sharedInstance() {
  static auto* const shared = new Recording;
  return *shared;
}

Recording::Recording()
    : acts_([this](const UIViewRef& view,
                   const std::optional<CGPoint>& place) { return portray(view, place); },
            [this](const Act& act) { take(act); }) {}

bool Recording::start(const std::shared_ptr<const Notify>& client, const std::string& checkKey) {
  stop(client);
  if (audience_.isEmpty() || !checkKey.empty()) acts_.setCheckKey(checkKey);
  if (audience_.isEmpty() && !acts_.start()) return false;
  audience_.add(client);
  // The script that says what lies in a page is in it before it is needed.
  for (const UIViewRef& webView : webViews()) {
    platform::spawn(readyForPortraits(webView), [](const std::exception_ptr& failure) {
      platform::logFailure("recording in a page", failure);
    });
  }
  return true;
}

void Recording::stop(const std::shared_ptr<const Notify>& client) {
  finish();
  audience_.remove(client);
  if (audience_.isEmpty()) acts_.stop();
}

void Recording::finish() {
  acts_.finish();
  tell(false);
}

Portrait Recording::portray(const UIViewRef& view, const std::optional<CGPoint>& place) {
  const std::shared_ptr<PortraitText> portrait =
      portraitOf(view, place ? ReachedBy::Pointer : ReachedBy::Keys);
  const UIViewRef webView = webViewAround(view);
  if (!webView) return portrait;
  portrait->isComplete = false;
  platform::spawn(portrayInPage(webView, converted(place, view, webView), portrait),
                  [this, portrait](const std::exception_ptr& failure) {
                    platform::logFailure("recording in a page", failure);
                    complete(*portrait);
                  });
  platform::current().dispatch->afterOnMain(kPatience, [this, portrait] { complete(*portrait); });
  return portrait;
}

void Recording::complete(PortraitText& portrait) {
  portrait.isComplete = true;
  tell(true);
}

void Recording::take(const Act& act) {
  if (audience_.isEmpty()) return acts_.stop();
  const bool hasGrown = !waiting_.empty() && waiting_.back().order == act.order;
  if (hasGrown) waiting_.pop_back();
  waiting_.push_back(act);
  tell(true);
}

void Recording::tell(bool waits) {
  while (!waiting_.empty() && (!waits || isComplete(waiting_.front()))) {
    Act act = std::move(waiting_.front());
    waiting_.pop_front();
    settleText(act, click_);
    audience_.tell(notification("record.step", stepOf(act)));
    if (act.kind == acts::kClick) click_ = std::move(act);
  }
}

}  // namespace tarni::session
