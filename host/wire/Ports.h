// Ports: the agent's two ports, and what the kernel says about a port without touching it. Linux
// only, any thread.
//
// Looking instead of connecting matters: a port takes one client, the recorder's ever only one, and
// a playback connection that comes and goes ends recording.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

namespace tarni::host {

inline constexpr std::uint16_t kRecorderPort = 9892;
inline constexpr std::uint16_t kPlaybackPort = 9898;

enum class PortUse {
  Free,
  Listening,
  Held,     // no longer listening: a client is connected
  Unknown,  // the kernel does not tell
};

// `networkOf` is the process whose network is meant, "self" or a decimal process identifier.
PortUse portUse(std::uint16_t port, const std::string& networkOf = "self");

// The process of this user that has `port` open in this process's network. Null when there is none
// or it is hidden from this user.
std::optional<pid_t> processServing(std::uint16_t port);

}  // namespace tarni::host
