#include "host/launch/StandAside.h"

#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

namespace tarni::host {

void standAside(int& kept) {
  setsid();
  const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, standard);
  kept = dup2(kept, STDERR_FILENO + 1);
  close_range(STDERR_FILENO + 2, ~0U, 0);
}

}  // namespace tarni::host
