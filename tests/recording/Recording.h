// A headless application whose events pass through the recorder. The worker runs when a test says
// so.
#pragma once

#include <atomic>
#include <nlohmann/json.hpp>
#include <string>
#include <thread>
#include <vector>

#include "agent/Queue/ElementsQueue.h"
#include "agent/Queue/RecorderQueue.h"
#include "agent/core/startup/UIApplication_KIFAdditions_EventHook.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/recording/RecorderWorker.h"
#include "agent/recording/TypedText.h"
#include "tests/support/Screen.h"

namespace tarni::test {

class Recording : public Screen {
 protected:
  Recording() {
    KIFAdditions::loadUIApplication(platform::uikit::UIApplication);
    ElementsQueue::sharedInstance().clearBucket();
    RecorderQueue::get().clearRecorderQueue();
    GlobalVars& shared = GlobalVars::sharedInstance();
    shared.set_isPlaybackStarted(std::nullopt);
    shared.set_spyMode("false");
    shared.set_editAbleElement(nullptr);
    shared.set_webViewBase64Image(std::nullopt);
    TypedText::sharedInstance().takeAll();
  }

  // What the polling hook does: gives views their identities and follows what is typed.
  void walk() {
    GlobalVars::sharedInstance().set_uiWindow(window);
    UIViewsManager manager;
    manager.GetAllViews(window, true);
    TypedText::sharedInstance().follow();
  }

  // One run of the worker on a thread of its own, while the main thread serves it.
  void runWorker() {
    std::atomic<bool> hasEnded = false;
    std::thread worker([&] {
      RecorderWorker::sharedInstance().run();
      hasEnded = true;
      environment.runLoop().post([] {});
    });
    environment.runLoop().runUntil([&] { return hasEnded.load(); });
    worker.join();
  }

  // The steps that were queued since the last call.
  static std::vector<nlohmann::ordered_json> takeSteps() {
    std::vector<nlohmann::ordered_json> steps;
    while (const auto item = RecorderQueue::get().dequeue()) {
      EXPECT_EQ(item->size(), 1U);
      steps.push_back(item->at(0));
    }
    return steps;
  }

  // The only step of a tap: the walk, the finger, the worker.
  nlohmann::ordered_json stepOfTap(const headless::View& view) {
    walk();
    environment.finger().tap(view);
    runWorker();
    const auto steps = takeSteps();
    EXPECT_EQ(steps.size(), 1U);
    return steps.empty() ? nlohmann::ordered_json() : steps.back();
  }

  static nlohmann::ordered_json objectOf(const nlohmann::ordered_json& step) {
    return step.at("arguments").at(0);
  }
  static std::string actionOf(const nlohmann::ordered_json& step) { return step.at("action"); }
  static std::string dataOf(const nlohmann::ordered_json& step) {
    return step.at("arguments").at(1).at("data");
  }
};

}  // namespace tarni::test
