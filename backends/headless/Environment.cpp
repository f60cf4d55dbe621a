#include "backends/headless/Environment.h"

#include <vector>

namespace tarni::headless {

Environment::~Environment() {
  shared_.runLoop.close();
  if (platform::current().application != &application_) return;
  platform::Platform remaining;
  remaining.log = &shared_.log;
  platform::install(remaining);
}

Environment::Shared& Environment::makeShared() {
  static auto* const all = new std::vector<Shared*>;
  return *all->emplace_back(new Shared);
}

void Environment::install() {
  platform::Platform parts;
  parts.toolkit = "headless";
  parts.log = &shared_.log;
  parts.processInfo = &shared_.processInfo;
  parts.machHost = &shared_.machHost;
  parts.encoding = &encoding_;
  parts.notificationCenter = &notificationCenter_;
  parts.dispatch = &shared_.dispatch;
  parts.runtime = &runtime_;
  parts.transaction = &transaction_;
  parts.application = &application_;
  parts.mainScreen = &screen_;
  parts.alerts = &alerts_;
  parts.hidEvents = &hidEvents_;
  parts.inputDevices = &inputDevices_;
  parts.personsDevices = &personsDevices_;
  platform::install(parts);
}

WindowRef Environment::makeWindow() {
  auto window = std::make_shared<Window>(screen_.bounds());
  window->makeKeyAndVisible(application_);
  return window;
}

}  // namespace tarni::headless
