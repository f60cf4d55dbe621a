#include "host/cli/PlayOptions.h"

namespace tarni::host {

SessionProgram::Start PlayOptions::start() const {
  SessionProgram::Start start{program, trusts};
  if (ownDisplay) {
    start.runOptions.push_back("--display" + (displaySize.empty() ? "" : "=" + displaySize));
  }
  return start;
}

}  // namespace tarni::host
