#include "host/cli/PlayOptions.h"

#include <iomanip>
#include <sstream>

namespace tarni::host {

std::string inSeconds(double value) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << value << " s";
  return text.str();
}

SessionProgram::Start PlayOptions::start() const {
  SessionProgram::Start start{program, trusts};
  if (ownDisplay) {
    start.runOptions.push_back("--display" + (displaySize.empty() ? "" : "=" + displaySize));
  }
  return start;
}

}  // namespace tarni::host
