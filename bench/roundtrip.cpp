// One command and its answer on a live Qt program, against a bare loopback echo of the same bytes.
#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>

#include "bench/Echo.h"
#include "bench/Pairs.h"
#include "bench/RatioReporter.h"
#include "tests/support/Program.h"
#include "tests/support/Wire.h"

namespace tarni::bench {
namespace {

constexpr std::uint16_t kEchoPort = 9999;

int boundSocket() {
  const int listening = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const int yes = 1;
  setsockopt(listening, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_port = htons(kEchoPort);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  const auto* const anyAddress = reinterpret_cast<const sockaddr*>(&address);
  if (bind(listening, anyAddress, sizeof address) < 0) _exit(1);
  return listening;
}

void gettext(benchmark::State& state, const std::string& major) {
  const test::Program program(
      {test::built("bin/qt-sample-" + major)},
      {{"LD_PRELOAD", test::built("lib/libtarni.so")}, {"QT_QPA_PLATFORM", "offscreen"}});
  const test::Playback playback;
  const std::string button = playback.one("UIButton", "text", "Log in");
  const std::string line =
      nlohmann::json{{"functionname", "gettext"}, {"accessorvalue", button}}.dump();
  const pid_t server = startEcho(boundSocket);
  {
    const test::Wire echo(kEchoPort);
    askInPairs(
        state,
        [&] {
          playback.wire().sendLine(line);
          benchmark::DoNotOptimize(playback.wire().readMessage());
        },
        [&] {
          echo.sendLine(line);
          echo.read(line.size() + 2);
        });
  }
  waitpid(server, nullptr, 0);
}
BENCHMARK_CAPTURE(gettext, qt5, "5")
    ->UseManualTime()
    ->Iterations(kPairs)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(gettext, qt6, "6")
    ->UseManualTime()
    ->Iterations(kPairs)
    ->Unit(benchmark::kMicrosecond);

const bool kRoundtripRegistered = [] {
  for (const std::string major : {"5", "6"}) {
    inPairs({"gettext/qt" + major, "", 3, false,
             "a command and its answer, on a Qt " + major + " program",
             "a bare echo of the same bytes"});
  }
  return true;
}();

}  // namespace
}  // namespace tarni::bench
