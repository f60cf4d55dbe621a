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

// Looks at the port without connecting, as a connection that comes and goes ends recording. The
// network can be looked at only once the program is there.
bool isServed(const Invocation& invocation) {
  if (invocation.options.in.empty() && !invocation.options.session.empty()) return true;
  const auto network = invocation.network();
  if (!network) return false;
  const auto use = portUse(invocation.playbackPort(), *network);
  return use == PortUse::Listening || use == PortUse::Held;
}

[[noreturn]] void refuse(const WaitOptions& options) {
  throw NotFound(options.gone ? options.locator.description() + " is still on screen"
                              : "no " + options.locator.description() + " came up in time");
}

void waitForElement(Invocation& invocation, const WaitOptions& options, Deadline deadline) {
  const bool done = repeatUntil(deadline, [&] {
    return options.locator.findOnce(invocation).elementIds().empty() == options.gone;
  });
  if (!done) refuse(options);
}

void wait(Invocation& invocation, const WaitOptions& options) {
  const auto deadline = Clock::now() + fromSeconds(options.timeout);
  if (!repeatUntil(deadline, [&invocation] { return isServed(invocation); })) {
    invocation.enterNetwork();  // which says when there is no such program
    throw WireError("nothing listens on " + std::to_string(invocation.playbackPort()) +
                    ": is the program running with the agent?");
  }
  if (!options.locator.isGiven()) return;
  if (!invocation.session()) {
    waitForElement(invocation, options, deadline);
  } else if (!options.locator.await(invocation, options.gone, deadline)) {
    refuse(options);
  }
}

}  // namespace

void declareWait(CLI::App& parser, Invocation& invocation) {
  const auto options = std::make_shared<WaitOptions>();
  parser.footer(
      "Without an element, waits until the agent's port is open and does not touch it, so that\n"
      "recording goes on. With one, waits until it is there (by the playback port, which ends\n"
      "recording, when the program has no session channel). What is marked * takes that.");
  options->locator.declareSearch(parser);
  parser.add_option("--tag,--class", options->locator.tag, "its class, as UIButton")
      ->type_name("CLASS");
  parser.add_flag("--gone", options->gone, "wait until no such element is there any more");
  parser.add_option("--timeout", options->timeout, "how long to wait (default 10)")
      ->type_name("SECONDS")
      ->check(CLI::NonNegativeNumber.description(""));
  parser.callback([options, &invocation] { wait(invocation, *options); });
}

}  // namespace tarni::host
