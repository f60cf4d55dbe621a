// RecordControl: starts the agent and keeps the polling hook going.
//
// The hook runs every 0.2 s on the background queue, one tick at a time, and hops to the main
// thread for the walk over the views, unless that thread has done nothing since the walk before. It
// ends only when the application's event loop is gone.
#pragma once

namespace tarni {

class RecordControl {
 public:
  // The start-up sequence. Main thread, once.
  static void load();

  // Arms one tick of the polling hook, 0.2 s from now; each tick arms the next. Any thread.
  static void dispatchHook();

  // The application is about to end: what was recorded and not sent goes out, in 0.2 s at most.
  // Main thread.
  static void applicationWillTerminate() noexcept;
};

}  // namespace tarni
