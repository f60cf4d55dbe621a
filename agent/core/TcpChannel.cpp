#include "agent/core/TcpChannel.h"

#include <chrono>
#include <exception>
#include <nlohmann/json.hpp>
#include <thread>

#include "agent/Queue/RecorderQueue.h"
#include "agent/TcpCommunication/BaseManager/ServerManager.h"
#include "agent/core/GlobalVars.h"
#include "agent/diagnostics/Errors.h"
#include "agent/elements/Utilities.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

constexpr auto idleTime = std::chrono::seconds(1);

void send(const std::string& text) {
  ServerManager::serverManager().initialiseRecorderServerOnPortNumberWithRecorderRequest(
      ServerManager::recorderPort, text);
}

void senderLoop() {
  for (;;) {
    try {
      TcpChannel::sendPendingSteps();
    } catch (...) {
      Diagnostics::logCurrentException("Sender loop");
    }
    std::this_thread::sleep_for(idleTime);
  }
}

}  // namespace

void TcpChannel::start() {
  platform::current().dispatch->backgroundQueue().async(senderLoop);
  send("Welcome! RecorderServer StartedSuccessfully ");
  ServerManager::serverManager().initialisePlayBackServerOnPortNumberWithPlayBackResponse(
      ServerManager::playbackPort, "Welcome PlayBackServer Started Successfully (v25-Mar-2019)");
}

void TcpChannel::sendPendingSteps() {
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

}  // namespace tarni
