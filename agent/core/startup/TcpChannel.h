// TcpChannel: opens both servers and streams recorded steps to the host tool.
#pragma once

#include <chrono>

namespace tarni {

class TcpChannel {
 public:
  // Starts the sender loop, which never ends, on the background queue, then opens the recorder
  // server (port 9892) and the playback server (port 9898). Main thread, once.
  void start();

  // One pass of the sender loop: the pending web steps first, then everything that waits on
  // RecorderQueue; in spy mode the first item only, the ones behind it are dropped. Any thread.
  // A step that could not be delivered is not queued again.
  static void sendPendingSteps();

  // The same before the application ends, at once: waits until the system has taken over what was
  // sent, for the deadline at most. Any thread.
  static void sendLastSteps(std::chrono::steady_clock::time_point deadline);
};

}  // namespace tarni
