// MobileCommands: what clients of phones ask for by "mobile: …", and what only this server has, by
// "tarni: …". The session's thread.
#pragma once

#include <string>

#include "host/webdriver/Session.h"

namespace tarni::host::webdriver {

// `name` is what stands behind the colon. Throws Error: "unknown method" for none of that name.
Json runMobileCommand(Session& session, const std::string& name, const Json& parameters);

// Asks the session channel itself: "method" and "params".
Json callChannel(Session& session, const Json& parameters);

}  // namespace tarni::host::webdriver
