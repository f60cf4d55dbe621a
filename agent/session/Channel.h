// The session channel: the agent's second, additive way in, beside the two fixed ports
// (docs/session.md). Main thread.
#pragma once

#include <future>

namespace tarni::session {

// Opens the channel where TARNI_SESSION says, and takes the variable out of the environment, which
// children of the program inherit. Without the variable there is no channel; what keeps it from
// opening is one line in the log. Called once.
void open();

// The program is about to end: clients are sent what is still to be told. Ready once it has gone
// out, as far as they read it; invalid without a channel.
std::future<void> finish() noexcept;

// Takes the socket away; the program is about to end.
void close() noexcept;

}  // namespace tarni::session
