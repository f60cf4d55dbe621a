#include <gmock/gmock.h>

#include <future>
#include <nlohmann/json.hpp>

#include "host/wire/FrameReader.h"
#include "host/wire/PlaybackClient.h"
#include "host/wire/RecorderClient.h"
#include "host/wire/WireError.h"
#include "tests/host/ScriptedAgent.h"
#include "tests/support/Program.h"

namespace tarni::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;
using namespace std::chrono_literals;
using test::ScriptedAgent;
using Peer = ScriptedAgent::Peer;

constexpr auto kGreeting = "Welcome PlayBackServer Started Successfully (v25-Mar-2019)";
constexpr auto kRecorderGreeting = "Welcome! RecorderServer StartedSuccessfully ";

PlaybackClient connected(milliseconds answerTimeout = 5s) {
  return PlaybackClient(2s, answerTimeout);
}

TEST(FrameReader, FindsMessagesHoweverTheBytesAreCut) {
  const std::string bytes = ScriptedAgent::framed("[]") + "Are you still there?\r\n" +
                            ScriptedAgent::framed("") + ScriptedAgent::framed("[\"\xC3\xA9\"]");
  for (std::size_t piece = 1; piece <= bytes.size(); ++piece) {
    FrameReader reader;
    std::vector<std::string> messages;
    for (std::size_t at = 0; at < bytes.size(); at += piece) {
      reader.append(std::string_view(bytes).substr(at, piece));
      while (auto message = reader.next()) messages.push_back(*message);
    }
    ASSERT_THAT(messages, ElementsAre("[]", "", "[\"\xC3\xA9\"]")) << "pieces of " << piece;
    ASSERT_EQ(reader.pendingBytes(), 0U);
  }
}

TEST(PlaybackClient, SkipsTheGreetingOnlyWhenThereIsOne) {
  for (const bool greets : {true, false}) {
    const ScriptedAgent agent(kPlaybackPort, [greets](Peer& peer) {
      if (greets) peer.sendFramed(kGreeting);
      test::answering([](const auto&) { return R"([{"elementID":"A"},{"elementID":"B"}])"; })(peer);
    });
    EXPECT_THAT(connected().call({"findelements"}).elementIds(), ElementsAre("A", "B"));
  }
}

TEST(PlaybackClient, PutsAShortCommandBeforeALongFirstOne) {
  std::vector<std::size_t> sizes;
  {
    const ScriptedAgent agent(kPlaybackPort, test::answering([&sizes](const auto& line) {
                                sizes.push_back(line.size());
                                return "[]";
                              }));
    connected().call({"findelements", std::string(100'000, 'x')});
  }
  ASSERT_EQ(sizes.size(), 2U);
  EXPECT_LT(sizes[0], 100U);
  EXPECT_GT(sizes[1], 100'000U);
}

TEST(PlaybackClient, SaysWhatWentWrong) {
  const auto failure = [](const ScriptedAgent::Script& script, milliseconds answerTimeout = 60s) {
    const ScriptedAgent agent(kPlaybackPort, script);
    auto client = connected(answerTimeout);
    client.call({"gettext", "", "", "X"});
  };
  EXPECT_THAT([&] { failure([](Peer& peer) { peer.readLine(); }); },
              ThrowsMessage<WireError>(HasSubstr("closed the connection")));
  const auto cutShort = [](Peer& peer) {
    peer.readLine();
    peer.send("0000000010[{");
  };
  EXPECT_THAT([&] { failure(cutShort); },
              ThrowsMessage<WireError>(HasSubstr("in the middle of a message")));
  const auto silent = [](Peer& peer) {
    peer.readLine();
    peer.readLine();
  };
  EXPECT_THAT([&] { failure(silent, 300ms); },
              ThrowsMessage<WireError>(HasSubstr("did not answer")));
  const auto foreign = [](Peer& peer) { peer.send("220 mail.example.org ESMTP\r\n"); };
  EXPECT_THAT([&] { failure(foreign); }, ThrowsMessage<WireError>(HasSubstr("no agent")));
  const auto flood = [](Peer& peer) {
    std::string prompts;
    while (prompts.size() < 100'000) prompts += "Are you still there?\r\n";
    while (peer.send(prompts)) {
    }
  };
  EXPECT_THAT([&] { failure(flood, 300ms); },
              ThrowsMessage<WireError>(HasSubstr("did not answer")));
  const auto exception = [](Peer& peer) {
    peer.readLine();
    peer.sendFramed(R"([{"exceptionmsg":"out of range"}])");
  };
  EXPECT_THAT([&] { failure(exception); }, ThrowsMessage<AgentException>("out of range"));
  EXPECT_THROW(PlaybackCommand({"findelements", "\xFF"}).line(), std::invalid_argument);
}

TEST(Answer, IsRefusedBeyondWhatAnAgentSends) {
  const auto nested = [](std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
  };
  const auto withKeys = [](std::size_t count) {
    nlohmann::json object;
    for (std::size_t i = 0; i < count; ++i) object[std::to_string(i)] = "";
    return nlohmann::json::array({object}).dump();
  };
  EXPECT_TRUE(Answer(nested(kDeepestJson)).entries().empty());
  EXPECT_EQ(Answer(withKeys(kMostKeys)).entries()[0].size(), kMostKeys);
  std::string manyValues = "[0";
  for (std::size_t i = 0; i < kMostValues; ++i) manyValues += ",0";
  for (const auto& text : {nested(kDeepestJson + 1), withKeys(kMostKeys + 1), manyValues + "]"}) {
    EXPECT_THAT([&text] { Answer refused(text); },
                ThrowsMessage<WireError>(HasSubstr("sent what no agent sends")));
  }
}

TEST(Connecting, TellsAMissingProgramFromAPortThatIsHeld) {
  EXPECT_THAT([] { PlaybackClient(0ms, 1s); },
              ThrowsMessage<WireError>("nothing listens on 9898: is the program running with the "
                                       "agent, as `tarni run` starts it?"));
  std::promise<void> done;
  const ScriptedAgent agent(kPlaybackPort, [&done](Peer&) { done.get_future().wait(); });
  const PlaybackClient holder(2s, 1s);
  ASSERT_TRUE(test::eventually([] { return portUse(kPlaybackPort) == PortUse::Held; }));
  EXPECT_THAT([] { PlaybackClient(500ms, 1s); },
              ThrowsMessage<WireError>(HasSubstr("another client holds it")));
  done.set_value();
}

TEST(RecorderClient, SendsNoMoreCommandsThanTheAgentReads) {
  std::vector<std::string> received;
  {
    const ScriptedAgent agent(kRecorderPort, [&received](Peer& peer) {
      peer.sendFramed(kRecorderGreeting);
      for (const auto* message : {"[1]", "[2]"}) peer.sendFramed(message);
      for (auto line = peer.readLine(); !line.empty(); line = peer.readLine()) {
        received.push_back(line);
      }
    });
    RecorderClient client(2s);
    client.startObjectSpy();
    EXPECT_FALSE(client.highlight(0)) << "nothing has come that makes the agent read";
    ASSERT_TRUE(client.next(5s));
    EXPECT_TRUE(client.highlight(1));
    EXPECT_TRUE(client.highlight(2));
    EXPECT_FALSE(client.highlight(3)) << "one read is left for the end";
    ASSERT_TRUE(client.next(5s));
    EXPECT_TRUE(client.highlight(4));
    client.stopObjectSpy();
  }
  EXPECT_THAT(received, ElementsAre("startobjectspy", "highlight=1", "highlight=2", "highlight=4",
                                    "stopobjectspy"));
}

}  // namespace
}  // namespace tarni::host
