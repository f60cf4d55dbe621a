#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <thread>

#include "host/cli/Invocation.h"
#include "host/cli/Locator.h"
#include "host/cli/Subcommands.h"
#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

constexpr milliseconds kPause{50};

struct WaitOptions {
  Locator locator;
  bool gone = false;
  double timeout = 10;
};

// Calls `attempt` until it returns true; false at the deadline.
template <typename Attempt>
bool repeatUntil(Deadline deadline, const Attempt& attempt) {
  while (!attempt()) {
    if (Clock::now() >= deadline) return false;
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

// The network can be entered only once the program is there.
bool entersNetwork(Invocation& invocation) {
  try {
    invocation.enterNetwork();
    return true;
  } catch (const WireError&) {
    return false;
  }
}

// Looks at the port without connecting, as a connection that comes and goes ends recording.
bool isServed(const Invocation& invocation) {
  const auto use = portUse(invocation.playbackPort());
  return use == PortUse::Listening || use == PortUse::Held;
}

void waitForElement(Invocation& invocation, const WaitOptions& options, Deadline deadline) {
  const bool done = repeatUntil(deadline, [&] {
    return options.locator.findOnce(invocation).elementIds().empty() == options.gone;
  });
  if (done) return;
  throw NotFound(options.gone ? options.locator.description() + " is still on screen"
                              : "no " + options.locator.description() + " came up in time");
}

void wait(Invocation& invocation, const WaitOptions& options) {
  const auto deadline = Clock::now() + fromSeconds(options.timeout);
  repeatUntil(deadline, [&invocation] { return entersNetwork(invocation); });
  invocation.enterNetwork();
  if (!repeatUntil(deadline, [&invocation] { return isServed(invocation); })) {
    throw WireError("nothing listens on " + std::to_string(invocation.playbackPort()) +
                    ": is the program running with the agent?");
  }
  if (options.locator.isGiven()) waitForElement(invocation, options, deadline);
}

}  // namespace

void declareWait(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<WaitOptions>();
  parser.footer(
      "Without an element, waits until the agent's port is open and does not touch it, so that\n"
      "recording goes on. With one, waits until it is there (playback then has begun).");
  options->locator.declareSearch(parser);
  parser.add_option("--tag", options->locator.tag, "its class, as UIButton")->type_name("CLASS");
  parser.add_flag("--gone", options->gone, "wait until no such element is there any more");
  parser.add_option("--timeout", options->timeout, "how long to wait (default 10)")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber.description(""));
  parser.callback([options, &invocation] { wait(invocation, *options); });
}

}  // namespace tarni::host
