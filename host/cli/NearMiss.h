// NearMiss: what may have been meant when nothing fits: a text in another case or with a slip of
// the finger, the toolkit's own name of a class. Main thread.
#pragma once

#include <string>

#include "host/session_client/Selector.h"

namespace tarni::host {

// "; did you mean --text "Open", of a UIButton?", or "" when nothing is like it. Asks the program
// for all that it shows.
std::string nearMissOf(SessionClient& client, const Selector& wanted);

}  // namespace tarni::host
