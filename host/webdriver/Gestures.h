// Gestures: what fingers do, as clients of phones ask for it: on an element ("elementId"), or where
// the parameters say. All throw Error. The session's thread.
#pragma once

#include "host/webdriver/Session.h"

namespace tarni::host::webdriver::gestures {

Json tap(Session& session, const Json& parameters);
Json doubleTap(Session& session, const Json& parameters);
Json touchAndHold(Session& session, const Json& parameters);
Json dragFromTo(Session& session, const Json& parameters);
Json swipe(Session& session, const Json& parameters);
Json scroll(Session& session, const Json& parameters);
Json pinch(Session& session, const Json& parameters);
Json pinchOpen(Session& session, const Json& parameters);
Json pinchClose(Session& session, const Json& parameters);
Json rotate(Session& session, const Json& parameters);
Json twoFingerTap(Session& session, const Json& parameters);

}  // namespace tarni::host::webdriver::gestures
