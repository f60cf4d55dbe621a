#include "host/cli/Invocation.h"

#include "host/cli/Terminal.h"
#include "host/guard/Printable.h"
#include "host/launch/NetworkNamespace.h"
#include "host/launch/ProgramRegistry.h"
#include "host/session/StartLine.h"
#include "host/wire/WireError.h"

namespace tarni::host {

milliseconds fromSeconds(double seconds) {
  return std::chrono::round<milliseconds>(std::chrono::duration<double>(seconds));
}

PlaybackClient& Invocation::playback() {
  if (!playback_) {
    enterNetwork();
    playback_ = std::make_unique<PlaybackClient>(
        fromSeconds(options.connectSeconds), fromSeconds(options.answerSeconds), playbackPort());
    playback_->wire().onProgress(Terminal::showProgress);
  }
  return *playback_;
}

RecorderClient Invocation::recorder() {
  enterNetwork();
  return RecorderClient(fromSeconds(options.connectSeconds), recorderPort());
}

void Invocation::enterNetwork() {
  if (options.in.empty() || entered_) return;
  const ProgramRegistry registry;
  const auto program = registry.find(options.in);
  if (!program) {
    std::string known;
    for (const auto& other : registry.all()) known += (known.empty() ? "" : ", ") + other.name;
    auto why = "no isolated program named \"" + options.in + "\" is running (" +
               (known.empty() ? "none is" : "running: " + known) + ")";
    if (const auto elsewhere = registry.folderElsewhere(options.in)) {
      why += "; one is known in " + printable(elsewhere->string()) +
             ", but this command looks in " + printable(registry.folder().string()) +
             ": it needs the XDG_RUNTIME_DIR of `tarni run`";
    }
    throw WireError(why);
  }
  joinNetworkOf(program->pid);
  entered_ = true;
}

std::optional<pid_t> Invocation::program(std::uint16_t port) const {
  if (options.in.empty()) return processServing(port);
  const auto program = ProgramRegistry().find(options.in);
  return program ? std::optional(program->pid) : std::nullopt;
}

}  // namespace tarni::host
