// StreamPlay: `tarni play` of a session of the fixed stream, over the fixed ports. Main thread.
#pragma once

#include "host/cli/PlayOptions.h"
#include "host/stream/StreamSession.h"

namespace tarni::host {

class Invocation;

void playStream(Invocation& invocation, const PlayOptions& options, StreamSession session);

}  // namespace tarni::host
