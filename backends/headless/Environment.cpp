#include "backends/headless/Environment.h"

namespace tarni::headless {

Environment::~Environment() {
  runLoop_.close();
  if (platform::current().application == &application_) platform::install({.log = &log_});
}

void Environment::install() {
  platform::Platform parts;
  parts.log = &log_;
  parts.processInfo = &processInfo_;
  parts.encoding = &encoding_;
  parts.notificationCenter = &notificationCenter_;
  parts.dispatch = &dispatch_;
  parts.runtime = &runtime_;
  parts.transaction = &transaction_;
  parts.application = &application_;
  parts.mainScreen = &screen_;
  parts.alerts = &alerts_;
  parts.hidEvents = &hidEvents_;
  platform::install(parts);
}

WindowRef Environment::makeWindow() {
  const auto window = std::make_shared<Window>(screen_.bounds());
  window->makeKeyAndVisible(application_);
  return window;
}

}  // namespace tarni::headless
