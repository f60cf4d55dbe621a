#include "backends/ios/Application.h"

#include "backends/ios/guard/Collection.h"
#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Owned.h"
#include "backends/ios/guard/PrivateCall.h"
#include "backends/ios/runtime/Values.h"
#include "backends/ios/system/RunLoopWatch.h"
#include "backends/ios/touch/Touch.h"
#include "backends/ios/views/View.h"

// A value of C++ as an associated object.
@interface TarniAssociatedValue : NSObject {
 @public
  std::any* value_;
}
@end

@implementation TarniAssociatedValue

- (void)dealloc {
  delete value_;
  [super dealloc];
}

@end

namespace tarni::ios {
namespace {

// Nil before UIApplicationMain has made it. An extension of an application has none.
::UIApplication* shared() {
  const ::Class cls = objc_lookUpClass("UIApplication");
  return answered(cls, "sharedApplication",
                  [&]() -> ::UIApplication* { return [cls sharedApplication]; });
}

}  // namespace

platform::UIWindowRef Application::keyWindow() const {
  ::UIApplication* const application = shared();
  return viewOf(answered(application, "keyWindow", [&] { return [application keyWindow]; }));
}

std::vector<platform::UIWindowRef> Application::windowsWithKeyWindow() const {
  std::vector<platform::UIWindowRef> shown;
  const platform::UIWindowRef key = keyWindow();
  if (key) shown.push_back(key);
  ::UIApplication* const application = shared();
  NSArray* const all = answeredAll(application, "windows", [::UIWindow class],
                                   [&] { return [application windows]; });
  for (::UIWindow* window in all) {
    const platform::UIWindowRef other = viewOf(window);
    if (other != key && !other->isHidden()) shown.push_back(other);
  }
  return shown;
}

std::vector<platform::UIWindowRef> Application::windowsThatTakeInput() const {
  std::vector<platform::UIWindowRef> shown;
  ::UIApplication* const application = shared();
  NSArray* const all = answeredAll(application, "windows", [::UIWindow class],
                                   [&] { return [application windows]; });
  for (::UIWindow* window in all) {
    const platform::UIWindowRef view = viewOf(window);
    if (!view->isHidden() && view->isUserInteractionEnabled()) shown.push_back(view);
  }
  return platform::windowsInReach(shown, keyWindow());
}

platform::Task<void> Application::makeKeyWindow(platform::UIWindowRef window) {
  const auto view = std::dynamic_pointer_cast<View>(window);
  return completed([window = Owned(view ? (::UIWindow*)view->native() : nil)] {
    if (window) guarded([&] { [window.get() makeKeyWindow]; });
  });
}

platform::UITouchRef Application::makeTouch() {
  const auto touch = Owned<::UITouch*>::adopting(guarded([] { return [[::UITouch alloc] init]; }));
  return Touch::of(touch.get());
}

platform::UIEvent& Application::_touchesEvent() {
  ::UIApplication* const application = shared();
  ::UIEvent* event = nil;
  privately(application, @selector(_touchesEvent), "gestures are not made",
            [&] { event = [application _touchesEvent]; });
  if (!touchesEvent_ || touchesEvent_->native() != event) touchesEvent_.emplace(event);
  return *touchesEvent_;
}

platform::Task<void> Application::sendEvent(platform::UIEvent& event) {
  auto* const own = dynamic_cast<Event*>(&event);
  return completed([native = Owned(own ? own->native() : nil)] {
    noteWork("sendEvent:");
    if (native) guarded([&] { [shared() sendEvent:native.get()]; });
  });
}

platform::Task<platform::CFRunLoopRunResult> Application::runLoopRunInMode(
    std::string mode, double seconds, bool returnAfterSourceHandled) {
  return completed([mode = std::move(mode), seconds, returnAfterSourceHandled] {
    return static_cast<platform::CFRunLoopRunResult>(guarded([&] {
      const bool isDefault = mode == platform::kCFRunLoopDefaultMode;
      const CFRunLoopMode named =
          isDefault ? kCFRunLoopDefaultMode : (CFRunLoopMode)toNSString(mode);
      return CFRunLoopRunInMode(named, seconds, returnAfterSourceHandled);
    }));
  });
}

void Application::setRunLoopObserver(platform::RunLoopObserver* observer) {
  watchMainRunLoop(observer);
}

bool Application::openURL(std::string_view url) {
  ::UIApplication* const application = shared();
  return guarded([&]() -> bool {
    NSURL* const address = [NSURL URLWithString:toNSString(url)];
    if (!address || ![application canOpenURL:address]) return false;
    [application openURL:address options:@{} completionHandler:nil];
    return true;
  });
}

std::any& Application::associatedObject(const void* key) {
  ::UIApplication* const application = shared();
  if (!application) return platform::UIApplication::associatedObject(key);
  if (const id known = objc_getAssociatedObject(application, key)) {
    return *static_cast<TarniAssociatedValue*>(known)->value_;
  }
  const auto holder = Owned<TarniAssociatedValue*>::adopting([[TarniAssociatedValue alloc] init]);
  holder.get()->value_ = new std::any;
  objc_setAssociatedObject(application, key, holder.get(), OBJC_ASSOCIATION_RETAIN_NONATOMIC);
  return *holder.get()->value_;
}

}  // namespace tarni::ios
