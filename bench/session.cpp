// The session channel: a question and its answer between two processes against a bare echo, and
// what the methods themselves cost among many views.
#include <benchmark/benchmark.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "agent/session/calls/Call.h"
#include "agent/session/input/HeldInput.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "bench/Echo.h"
#include "bench/Pairs.h"
#include "bench/RatioReporter.h"
#include "bench/Screens.h"
#include "platform/Platform.h"
#include "tests/support/Complete.h"
#include "tests/support/Program.h"
#include "tests/support/SessionWire.h"

namespace tarni::bench {
namespace {

using session::Json;

// --- between two processes

int boundSocket(const std::string& path) {
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  path.copy(name.sun_path, sizeof name.sun_path - 1);
  const int listening = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (bind(listening, reinterpret_cast<const sockaddr*>(&name), sizeof name) < 0) _exit(1);
  return listening;
}

void session_describe(benchmark::State& state, const std::string& program,
                      test::Program::Environment environment) {
  const test::SessionFolder folder;
  const test::SessionFolder echoFolder;
  environment["TARNI_SESSION"] = folder.socket();
  const test::Program running({test::built("bin/" + program)}, environment);
  const pid_t server = startEcho([&echoFolder] { return boundSocket(echoFolder.socket()); });
  {
    const nlohmann::json found = test::SessionWire(folder.socket())
                                     .ask("element.find", {{"text", "Log in"}, {"all", false}});
    const nlohmann::json question = {{"jsonrpc", "2.0"},
                                     {"id", 1},
                                     {"method", "element.describe"},
                                     {"params", {{"element", found["elements"][0]["element"]}}}};
    const std::string line = question.dump() + "\n";
    const test::Wire agent(folder.socket());
    const test::Wire echo(echoFolder.socket());
    const auto ask = [&line](const test::Wire& wire) {
      wire.send(line);
      benchmark::DoNotOptimize(wire.readLine());
    };
    askInPairs(
        state, [&] { ask(agent); }, [&] { ask(echo); });
  }
  waitpid(server, nullptr, 0);
}
BENCHMARK_CAPTURE(session_describe, headless, "tarni-headless", {})
    ->UseManualTime()
    ->Iterations(kPairs)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(session_describe, qt5, "qt-sample-5", test::agentEnvironment())
    ->UseManualTime()
    ->Iterations(kPairs)
    ->Unit(benchmark::kMicrosecond);

// --- in one process

Json ask(const char* name, Json parameters) {
  const session::Method& method = *session::methodNamed(name);
  const auto call = std::make_shared<session::Call>(
      method, std::move(parameters),
      session::Call::Owned{std::make_shared<session::HeldInput>(), nullptr},
      [](const std::shared_ptr<session::Result>&, const session::SessionError*) {});
  const session::Result result = test::complete(method.handler(call));
  benchmark::DoNotOptimize(result.text());
  return result.value;
}

void session_tree(benchmark::State& state) {
  const platform::UIWindowRef window = makeScreen(state.range(0));
  for (auto _ : state) ask("tree.get", Json::object());
}
BENCHMARK(session_tree)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void session_tree_change(benchmark::State& state) {
  const platform::UIWindowRef window = makeScreen(state.range(0));
  auto label = headless::build<headless::Label>("changing")
                   .frame({{0, 0}, {100, 20}})
                   .in(*std::dynamic_pointer_cast<headless::Window>(window));
  Json version = ask("tree.get", Json::object())["version"];
  long turn = 0;
  for (auto _ : state) {
    label->setText("changed " + std::to_string(++turn));
    version = ask("tree.get", {{"since", version}})["version"];
  }
}
BENCHMARK(session_tree_change)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void session_find_text(benchmark::State& state) {
  const platform::UIWindowRef window = makeScreen(state.range(0));
  for (auto _ : state) ask("element.find", {{"text", "Label 99"}});
}
BENCHMARK(session_find_text)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

const platform::CGRect kPressed{{20, 20}, {100, 40}};

headless::WindowRef makePressed() {
  const auto window = std::dynamic_pointer_cast<headless::Window>(makeScreen(100));
  headless::build<headless::Button>("Pressed").frame(kPressed).in(*window);
  return window;
}

void two_events(benchmark::State& state) {
  const headless::WindowRef window = makePressed();
  headless::Finger& finger = environment().finger();
  for (auto _ : state) {
    finger.down(*window, {kPressed.midX(), kPressed.midY()});
    finger.up();
  }
}
BENCHMARK(two_events)->Unit(benchmark::kMicrosecond);

void session_click(benchmark::State& state) {
  const headless::WindowRef window = makePressed();
  if (!platform::current().inputDevices) return state.SkipWithError("no mouse here");
  const session::Method& find = *session::methodNamed("element.find");
  const auto call = std::make_shared<session::Call>(
      find, Json{{"text", "Pressed"}}, session::Call::Owned{},
      [](const std::shared_ptr<session::Result>&, const session::SessionError*) {});
  const session::Result found = test::complete(find.handler(call));
  const Json button = Json::parse(found.text())["elements"][0]["element"];
  for (auto _ : state) ask("element.click", {{"element", button}});
}
BENCHMARK(session_click)->Unit(benchmark::kMicrosecond);

const bool kSessionRegistered = [] {
  for (const std::string program : {"headless", "qt5"}) {
    inPairs({"session_describe/" + program, "", 3, false,
             "a question over the session channel, " + program,
             "a bare echo through a Unix socket"});
  }
  for (const long views : {1000L, 10000L}) {
    const std::string count = std::to_string(views);
    limit({"session_tree/" + count, 2000, static_cast<double>(views),
           "the whole tree of " + count + " views with its text, for each"});
    limit({"session_tree_change/" + count, 5e5, 1,
           "what changed among " + count + " views, after one label"});
  }
  limit({"session_find_text/10000", 1e6, 1, "find by text among 10,000 views, over the channel"});
  difference({"session_click", "two_events", 1e4, "a click by the session channel",
              "the two events in memory"});
  return true;
}();

}  // namespace
}  // namespace tarni::bench
