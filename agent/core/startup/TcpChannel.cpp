#include "agent/core/startup/TcpChannel.h"

#include <mutex>
#include <nlohmann/json.hpp>
#include <thread>

#include "agent/Queue/RecorderQueue.h"
#include "agent/TcpCommunication/BaseManager/ServerManager.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/core/state/Utilities_Json.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kIdleTime = std::chrono::seconds(1);
constexpr auto kPauseBetweenLooks = std::chrono::milliseconds(1);

void send(const std::string& text) {
  ServerManager::serverManager().initialiseRecorderServerOnPortNumberWithRecorderRequest(
      ServerManager::kRecorderPort, text);
}

// Steps go out in their order, whichever thread sends them. Made when it is first needed: where a
// load hook starts the agent, the library's initialisers come later.
std::timed_mutex& sending() {
  static auto* const mutex = new std::timed_mutex;
  return *mutex;
}

void sendAllSteps() {
  GlobalVars& shared = GlobalVars::sharedInstance();
  if (const auto steps = shared.take_hybridRecordedSteps()) send(*steps);
  RecorderQueue& queue = RecorderQueue::get();
  while (queue.getLength() != 0) {
    platform::NSLog("******Inside Get Length Condition");
    const auto item = queue.dequeue();
    if (!item) break;
    if (const auto text = Utilities::convertNSArrayToString(*item)) send(*text);
    if (GlobalVars::isTrue(shared._spyMode())) queue.clearRecorderQueue();
  }
}

void senderLoop() {
  for (;;) {
    try {
      TcpChannel::sendPendingSteps();
    } catch (...) {
      platform::logFailure("Sender loop");
    }
    std::this_thread::sleep_for(kIdleTime);
  }
}

}  // namespace

void TcpChannel::start() {
  platform::current().dispatch->backgroundQueue().async(senderLoop);
  send("Welcome! RecorderServer StartedSuccessfully ");
  ServerManager::serverManager().initialisePlayBackServerOnPortNumberWithPlayBackResponse(
      ServerManager::kPlaybackPort, "Welcome PlayBackServer Started Successfully (v25-Mar-2019)");
}

void TcpChannel::sendPendingSteps() {
  const std::lock_guard lock(sending());
  sendAllSteps();
}

void TcpChannel::sendLastSteps(Clock::time_point deadline) {
  const std::unique_lock lock(sending(), deadline);
  if (!lock) return;
  sendAllSteps();
  const GCDAsyncSocketRef host = ServerManager::serverManager().recorderServerSocket();
  while (host->pendingWrites().messages > 0 && Clock::now() < deadline) {
    std::this_thread::sleep_for(kPauseBetweenLooks);
  }
}

}  // namespace tarni
