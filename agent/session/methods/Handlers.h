// The handlers of the methods, called like them on the wire, one file a group. Main thread.
#pragma once

#include "agent/session/calls/Call.h"
#include "agent/session/protocol/Method.h"

namespace tarni::session {

using Answer = platform::Task<Result>;

namespace app {
Answer info(CallRef call);
Answer costs(CallRef call);
}  // namespace app

namespace window {
Answer list(CallRef call);
Answer activate(CallRef call);
Answer resize(CallRef call);
Answer close(CallRef call);
Answer picture(CallRef call);
}  // namespace window

namespace tree {
Answer get(CallRef call);
}  // namespace tree

namespace element {
Answer find(CallRef call);
Answer describe(CallRef call);
Answer locators(CallRef call);
Answer picture(CallRef call);
Answer click(CallRef call);
Answer setText(CallRef call);
Answer setValue(CallRef call);
Answer setExpanded(CallRef call);
Answer focus(CallRef call);
Answer scrollIntoView(CallRef call);
Answer scrollToText(CallRef call);
}  // namespace element

namespace input {
Answer pointer(CallRef call);
Answer touch(CallRef call);
Answer wheel(CallRef call);
Answer keys(CallRef call);
Answer text(CallRef call);
Answer drag(CallRef call);
}  // namespace input

namespace page {
Answer list(CallRef call);
Answer evaluate(CallRef call);
Answer find(CallRef call);
Answer tree(CallRef call);
}  // namespace page

namespace screen {
Answer watch(CallRef call);
Answer unwatch(CallRef call);
}  // namespace screen

namespace record {
Answer start(CallRef call);
Answer stop(CallRef call);
}  // namespace record

namespace wait {
Answer forConditions(CallRef call);
Answer rest(CallRef call);
}  // namespace wait

}  // namespace tarni::session
