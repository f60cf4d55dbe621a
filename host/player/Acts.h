// The acts of a session's steps, each carried out by the methods of the session channel.
#pragma once

#include "host/player/Acting.h"

namespace tarni::host {

// Carries out the step. Throws StepFailure when it cannot be done or nothing came of it, and as
// SessionClient::call does.
void carryOut(Acting& acting);

}  // namespace tarni::host
