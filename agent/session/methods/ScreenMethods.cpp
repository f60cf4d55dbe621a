#include "agent/session/methods/Handlers.h"
#include "agent/session/screen/Painting.h"

namespace tarni::session::screen {

Answer watch(CallRef call) {
  if (!Painting::sharedInstance().start(call->notify())) {
    throw SessionError(errors::kUnsupported, "this platform does not tell what is painted");
  }
  co_return Result();
}

Answer unwatch(CallRef call) {
  Painting::sharedInstance().stop(call->notify());
  co_return Result();
}

}  // namespace tarni::session::screen
