// What clients do wrong to the session channel of a program, and what becomes of the others.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <memory>
#include <thread>

#include "tests/support/Program.h"
#include "tests/support/SessionWire.h"

namespace tarni::test {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;

class SessionBadInput : public testing::Test {
 protected:
  std::unique_ptr<Program> start() const {
    return std::make_unique<Program>(
        std::vector{built("bin/tarni-headless")},
        Program::Environment{{"TARNI_SESSION", folder_.socket()}, {"TARNI_LOG", "stderr"}});
  }
  SessionWire client() const { return SessionWire(folder_.socket()); }
  static long handle(const SessionWire& client, const json& selector) {
    return client.find(selector)["element"];
  }
  static void expectError(const json& answer, const std::string& name) {
    EXPECT_EQ(answer["error"]["data"]["error"], name) << answer;
  }
  static json awaited(const std::string& text) {
    return {{"conditions", {{{"find", {{"text", text}}}, {"is", "there"}}}}};
  }

  const SessionFolder folder_;
};

// A socket that nobody answers any more is taken over, one that is answered is left alone.
TEST_F(SessionBadInput, ASocketOfAProgramThatIsGoneIsTakenOver) {
  auto first = start();
  EXPECT_EQ(client().ask("app.info", json::object())["pid"], first->pid());
  EXPECT_EQ(std::filesystem::status(folder_.socket()).permissions(), std::filesystem::perms(0600));
  const auto second = start();
  EXPECT_TRUE(eventually([&] {
    return second->output().find("is taken by another program") != std::string::npos;
  })) << second->output();
  EXPECT_EQ(client().ask("app.info", json::object())["pid"], first->pid());
  first->signal(SIGKILL);
  first->wait(10s);
  EXPECT_TRUE(std::filesystem::exists(folder_.socket())) << "a killed program leaves it";
  const auto third = start();
  EXPECT_TRUE(eventually([&] {
    try {
      return client().ask("app.info", json::object())["pid"] == third->pid();
    } catch (const std::exception&) {
      return false;
    }
  }));
}

TEST_F(SessionBadInput, AFolderOfOthersIsRefused) {
  std::filesystem::permissions(folder_.path, std::filesystem::perms(0755));
  const auto program = start();
  EXPECT_TRUE(eventually(
      [&] { return program->output().find("must be of mode 0700") != std::string::npos; }));
}

// Even when somebody has opened the doors: the other end's user counts.
TEST_F(SessionBadInput, AnotherUserIsRefused) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can be somebody else";
  const auto program = start();
  client().ask("app.info", json::object());
  chmod(folder_.path.c_str(), 0711);
  chmod(folder_.socket().c_str(), 0666);
  const pid_t other = fork();
  if (other == 0) {
    constexpr uid_t kNobody = 65534;
    if (setuid(kNobody) != 0) _exit(3);
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    folder_.socket().copy(name.sun_path, sizeof name.sun_path - 1);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(connection, reinterpret_cast<const sockaddr*>(&name), sizeof name) != 0) _exit(2);
    char byte = 0;
    _exit(recv(connection, &byte, 1, 0) <= 0 ? 0 : 1);
  }
  int status = 0;
  waitpid(other, &status, 0);
  EXPECT_EQ(status, 0) << "it was connected and told nothing";
  EXPECT_TRUE(eventually(
      [&] { return program->output().find("Another user's connection") != std::string::npos; }));
  EXPECT_TRUE(client().ask("app.info", json::object()).contains("pid"));
}

TEST_F(SessionBadInput, ALineWithoutEndIsRefused) {
  const auto program = start();
  const SessionWire other = client();
  const SessionWire endless = client();
  const std::string piece(1024UL * 1024, 'x');
  std::thread sending([&] {
    try {
      for (int i = 0; i < 18; ++i) endless.sendRaw(piece);
    } catch (const std::runtime_error&) {
      // it is closed while we send
    }
  });
  EXPECT_TRUE(other.ask("app.info", json::object()).contains("pid"));
  try {
    expectError(endless.answer(), "parse error");
  } catch (const std::runtime_error&) {
    // What was not read any more may take the answer with it.
  }
  sending.join();
  EXPECT_THROW(endless.answer(), std::runtime_error) << "and it is closed";
  EXPECT_TRUE(other.ask("app.info", json::object()).contains("pid"));
}

// Of reading it the ports and other clients feel nothing.
TEST_F(SessionBadInput, WhileALongLineIsReadOthersAreAnswered) {
  const auto program = start();
  const Playback playback;
  const SessionWire other = client();
  const SessionWire busy = client();
  std::string text;
  text.resize(15'000'000, 'x');
  busy.send("app.info", {{"x", text}}, 1);
  EXPECT_EQ(playback.command("nothing"), json::array());
  EXPECT_TRUE(other.ask("app.info", json::object()).contains("pid"));
  EXPECT_FALSE(busy.hasAnswer());
  expectError(busy.answer(), "invalid argument");
  busy.send("element.find", {{"within", json::array_t(250'000)}}, 2);
  expectError(busy.answer(), "parse error");
}

// The button of a client that goes away in the middle of its drag is let go: where it went down, so
// that it is a click.
TEST_F(SessionBadInput, WhatAClientHoldsIsLetGoWhenItGoes) {
  const auto program = start();
  const SessionWire other = client();
  other.ask("element.setText",
            {{"element", handle(other, {{"placeholder", "User name"}})}, {"text", "Ada"}});
  const json button = {{"element", handle(other, {{"kind", "UIButton"}, {"text", "Log in"}})}};
  {
    const SessionWire gone = client();
    gone.ask("input.pointer", {{"steps", {{{"move", button}}, {{"down", "left"}}}}});
    gone.ask("input.keys", {{"steps", {{{"down", "Shift"}}}}});
    gone.send("wait.for", awaited("never"), 1);
    gone.send("input.pointer", {{"steps", {{{"pause", 60'000}}, {{"up", "left"}}}}}, 2);
    EXPECT_TRUE(other.ask("element.find", {{"text", "Hello, Ada"}})["elements"].empty());
  }
  other.ask("wait.for", awaited("Hello, Ada"));
}

TEST_F(SessionBadInput, HandlesThatHaveGoneSaySo) {
  const auto program = start();
  const SessionWire one = client();
  one.ask("element.click", {{"element", handle(one, {{"textContains", "details"}})}});
  one.ask("wait.for", awaited("Really?"));
  // Another method while the dialog is open; the click has been answered.
  const long cancel = handle(one, {{"kind", "UIButton"}, {"text", "Cancel"}});
  one.ask("element.click", {{"element", cancel}});
  one.ask("wait.for", awaited("Rejected"));
  for (const char* method : {"element.describe", "element.click", "element.focus",
                             "element.scrollIntoView", "element.picture", "window.picture"}) {
    const bool isWindow = std::string(method).starts_with("window");
    one.send(method, {{isWindow ? "window" : "element", cancel}}, 5);
    expectError(one.answer(), "stale element reference");
  }
}

TEST_F(SessionBadInput, AProgramThatEndsEndsItsClients) {
  const auto program = start();
  const SessionWire waiting = client();
  const SessionWire asking = client();
  waiting.send("wait.for", awaited("never"), 1);
  asking.ask("app.info", json::object());
  for (int id = 1; id <= 200; ++id) asking.send("tree.get", json::object(), id);
  program->signal(SIGTERM);
  EXPECT_EQ(program->wait(20s), 128 + SIGTERM);
  EXPECT_THROW(waiting.answer(), std::runtime_error);
}

}  // namespace
}  // namespace tarni::test
