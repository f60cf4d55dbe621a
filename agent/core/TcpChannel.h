// TcpChannel: opens both servers and streams recorded steps to the host tool.
#pragma once

namespace tarni {

class TcpChannel {
 public:
  // Starts the sender loop, which never ends, on the background queue, then opens the recorder
  // server (port 9892) and the playback server (port 9898). Main thread, once.
  void start();

  // One pass of the sender loop: the pending web steps first, then everything that waits on
  // RecorderQueue; in spy mode the first item only, the ones behind it are dropped. Background
  // thread. A step that could not be delivered is not queued again.
  static void sendPendingSteps();
};

}  // namespace tarni
