// Pictures: those of a program's windows, as reports show them. Any thread, one at a time.
#pragma once

#include "host/player/Played.h"
#include "host/session_client/SessionClient.h"

namespace tarni::host {

// Of that window, or the window of that element; of the key window where there is none any more.
// Without data when there is none at all.
Picture pictureOfWindow(SessionClient& client, const Json& element = nullptr);

// Whether the program does within a short time: it may never be at rest.
bool comesToRest(SessionClient& client);

}  // namespace tarni::host
