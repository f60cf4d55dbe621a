#include "agent/session/screen/Painting.h"

#include <algorithm>
#include <utility>

#include "agent/session/protocol/JsonRpc.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni::session {
namespace {

constexpr auto kBetween = std::chrono::milliseconds(100);

bool observe(platform::PaintObserver* observer) {
  return platform::current().application->setPaintObserver(observer);
}

}  // namespace

Painting& Painting::sharedInstance() {
  static auto* const shared = new Painting;
  return *shared;
}

bool Painting::start(const std::shared_ptr<const Notify>& client) {
  audience_.remove(client);
  if (audience_.isEmpty() && !observe(this)) return false;
  audience_.add(client);
  return true;
}

void Painting::stop(const std::shared_ptr<const Notify>& client) {
  audience_.remove(client);
  if (audience_.isEmpty()) observe(nullptr);
}

void Painting::paints(const platform::UIWindowRef& window) noexcept {
  platform::runGuarded("session channel", [&] {
    if (window) {
      painted_.insert(Elements::sharedInstance().handleOf(window));
    } else {
      hasOpened_ = true;
    }
    tellSoon();
  });
}

// Once what is under way has been handled.
void Painting::tellSoon() {
  if (std::exchange(isPending_, true)) return;
  const double passed = seconds(Clock::now() - lastTold_);
  platform::current().dispatch->afterOnMain(std::max(seconds(kBetween) - passed, 0.0),
                                            [this] { tell(); });
}

void Painting::tell() {
  isPending_ = false;
  lastTold_ = Clock::now();
  const Json told{{"windows", std::exchange(painted_, {})},
                  {"opened", std::exchange(hasOpened_, false)}};
  if (audience_.isEmpty()) {
    observe(nullptr);
  } else {
    audience_.tell(notification("screen.painted", told.dump()));
  }
}

}  // namespace tarni::session
