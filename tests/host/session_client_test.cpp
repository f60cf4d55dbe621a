// The client of the session channel against what no agent sends.
#include "host/session_client/SessionClient.h"

#include <gmock/gmock.h>

#include "host/wire/WireError.h"
#include "tests/host/ScriptedAgent.h"

namespace tarni::host {
namespace {

using namespace std::chrono_literals;
using test::ScriptedAgent;
using testing::HasSubstr;
using Peer = ScriptedAgent::Peer;

constexpr std::uint16_t kPort = 9897;

// A program that answers the first request with these bytes and then goes.
std::string failureOf(const std::function<void(Peer&)>& answer,
                      std::chrono::milliseconds timeout = 30s) {
  const ScriptedAgent agent(kPort, [&answer](Peer& peer) {
    if (!peer.readLine().empty()) answer(peer);
  });
  SessionClient client("tcp:127.0.0.1:" + std::to_string(kPort), 2s);
  try {
    return "answered: " + client.call("app.info", Json::object(), timeout).dump();
  } catch (const WireError& error) {
    return error.what();
  } catch (const RequestError& error) {
    return error.name() + ": " + error.what();
  }
}

std::string failureOf(const std::string& bytes) {
  return failureOf([&bytes](Peer& peer) { peer.send(bytes); });
}

TEST(SessionClient, EndsWithASentenceWhateverAProgramSends) {
  const std::string depth(100'000, '[');
  const struct {
    std::string sent;
    std::string said;
  } kCases[] = {
      {"HTTP/1.1 400\r\n", "no JSON object"},
      {depth + "\n", "nested deeper"},
      {"[]\n", "no JSON object"},
      {"{}\n", "without \"id\""},
      {"{\"id\":1}\n", "without a result"},
      {"{\"id\":1,\"result\":7}\n", "without a result"},
      {"{\"id\":2,\"result\":{}}\n", "closed the session channel"},
      {"{\"id\":1,\"res", "within a line"},
      {"{\"id\":1,\"method\":\"ask\"}\n", "a request"},
      {"{\"id\":1,\"error\":7}\n", "unknown error"},
      {"{\"id\":1,\"error\":{\"message\":[],\"data\":{\"error\":{}}}}\n", "unknown error"},
      {"{\"id\":null,\"error\":{\"message\":\"no\",\"data\":{\"error\":\"parse error\"}}}\n",
       "parse error: no"},
      {"", "closed the session channel"},
      {"{\"method\":\"a\"}\n{\"method\":7}\n{\"id\":1,\"result\":{\"a\":1}}\n",
       "answered: {\"a\":1}"},
  };
  for (const auto& [sent, said] : kCases) {
    EXPECT_THAT(failureOf(sent), HasSubstr(said)) << sent.substr(0, 60);
  }
  const auto endless = [](Peer& peer) {
    const std::string much(std::size_t{16} * 1024 * 1024, 'x');
    for (int i = 0; i < 20; ++i) peer.send(much);
  };
  EXPECT_THAT(failureOf(endless), HasSubstr("does not end"));
  EXPECT_THAT(failureOf([](Peer& peer) { peer.readLine(); }, 10ms),
              HasSubstr("not answer app.info"));
}

TEST(SessionClient, KeepsNotificationsThatCameBeforeAnAnswerAndDropsLateAnswers) {
  const ScriptedAgent agent(kPort, [](Peer& peer) {
    peer.readLine();
    peer.send("{\"id\":9,\"result\":{}}\n{\"method\":\"step\",\"params\":{\"n\":1}}\n");
    peer.send("{\"id\":1,\"result\":{\"ok\":true}}\n{\"method\":\"step\"}\n");
    peer.readLine();
  });
  SessionClient client("tcp:127.0.0.1:" + std::to_string(kPort), 2s);
  EXPECT_EQ(client.call("record.start")["ok"], true);
  EXPECT_EQ(client.next(2s)->parameters["n"], 1);
  EXPECT_EQ(client.next(2s)->method, "step");
  EXPECT_FALSE(client.next(0s));
}

}  // namespace
}  // namespace tarni::host
