// Serving: what commands share that are servers.
#pragma once

#include <thread>

#include "host/guard/EndSignals.h"

namespace tarni::host {

// Serves on a thread of its own until a signal asks for the end. `Server` has `serve` and `stop`.
template <typename Server>
void serveUntilAsked(Server& server, const AwaitedSignals& signals) {
  std::thread serving([&server] { server.serve(); });
  signals.await();
  server.stop();
  serving.join();
}

}  // namespace tarni::host
