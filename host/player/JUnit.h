// JUnit: what has come of plays as the XML that build servers read. Plain values, any thread.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/player/Played.h"
#include "host/session/Session.h"

namespace tarni::host {

// A suite for each play of the session, a case for each of its steps. Texts that came from outside
// are escaped.
std::string junitXml(const std::string& name, const Session& session,
                     std::span<const std::vector<Played>> plays);

}  // namespace tarni::host
