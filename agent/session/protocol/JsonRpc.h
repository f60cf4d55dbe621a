// JSON-RPC 2.0 as the session channel speaks it: one message a line. Any thread.
#pragma once

#include <string>
#include <string_view>

#include "agent/session/protocol/SessionError.h"

namespace tarni::session {

// Throws SessionError: parse error for what is not JSON or is nested beyond reason, invalid request
// for what is not a request.
Json parseRequest(std::string_view line);

// The answers, without the end of the line. `result` is JSON text.
std::string resultAnswer(const Json& id, const std::string& result);
std::string errorAnswer(const Json& id, const SessionError& error);

// One line to a client that did not ask; `parameters` is JSON text.
std::string notification(std::string_view method, const std::string& parameters);

}  // namespace tarni::session
