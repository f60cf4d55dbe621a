#include "bench/Echo.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tarni::bench {

pid_t startEcho(const std::function<int()>& bound) {
  const pid_t server = fork();
  if (server != 0) return server;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const int listening = bound();
  listen(listening, 1);
  const int connection = accept(listening, nullptr, nullptr);
  char bytes[4096];
  for (ssize_t count; (count = recv(connection, bytes, sizeof bytes, 0)) > 0;) {
    if (send(connection, bytes, static_cast<std::size_t>(count), MSG_NOSIGNAL) < 0) break;
  }
  _exit(0);
}

}  // namespace tarni::bench
