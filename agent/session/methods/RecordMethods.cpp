#include "agent/session/methods/Handlers.h"
#include "agent/session/recording/Recording.h"

namespace tarni::session::record {

Answer start(CallRef call) {
  if (!Recording::sharedInstance().start(call->notify(),
                                         call->parameters().value("checkKey", ""))) {
    throw SessionError(errors::kUnsupported,
                       "this platform does not tell what a person does; the fixed port does");
  }
  co_return Result();
}

Answer stop(CallRef call) {
  Recording::sharedInstance().stop(call->notify());
  co_return Result();
}

}  // namespace tarni::session::record
