// Sockets that take and give a few bytes at a time. Each case is a process of its own, since the
// agent never ends.
#include <future>
#include <nlohmann/json.hpp>

#include "agent/TcpCommunication/BaseManager/ServerManager.h"
#include "agent/core/startup/Load.h"
#include "agent/elements/IdentityTag.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "tests/faults/NarrowSockets.h"
#include "tests/support/Screen.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

class ShortReadsAndWrites : public Screen, public testing::WithParamInterface<long> {
 protected:
  ShortReadsAndWrites() { environment.processInfo().setVirtual(false); }

  // What a host tool does, while the application runs.
  template <typename Work>
  auto asHost(Work work) {
    auto answer = std::async(std::launch::async, work);
    EXPECT_TRUE(environment.runLoop().runUntil(
        [&] {
          environment.runLoop().after(0.005, [] {});
          return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
        },
        kPatience.count()));
    return answer.get();
  }
};

TEST_P(ShortReadsAndWrites, ChangeNothingOnTheWire) {
  headless::build<headless::Label>("Grüße 🙂").frame({{0, 100}, {200, 40}}).in(*window);
  const auto button =
      headless::build<headless::Button>("Log in").frame({{0, 0}, {100, 40}}).in(*window);
  loadAgent();
  const NarrowSockets narrow(GetParam());

  const Wire recorder = asHost([] { return Wire(ServerManager::kRecorderPort); });
  EXPECT_EQ(asHost([&] { return recorder.readMessage(); }),
            "Welcome! RecorderServer StartedSuccessfully ");
  ASSERT_TRUE(environment.runLoop().runUntil(
      [&] {
        environment.runLoop().after(0.01, [] {});
        return button->layer().tag(kRecordingTag).number() != 0;
      },
      kPatience.count()));
  environment.finger().tap(*button);
  const auto step = nlohmann::json::parse(asHost([&] { return recorder.readMessage(); }));
  EXPECT_EQ(step.at(0).at("action"), "ClickButton");
  EXPECT_GT(step.at(0).at("arguments").at(0).at("ObjectImage").get<std::string>().size(), 100U);

  const auto player = asHost([] { return std::make_unique<Playback>(); });
  // The first read of a connection takes whatever arrives; a command ends at its line end later.
  asHost([&] { return player->wire().send("x"), player->wire().readMessage(); });
  const auto ask = [&](const char* name, const std::string& value) {
    return asHost([&, name, value] {
      return player->ask(
          {{"functionname", name}, {"accessortype", "text"}, {"accessorvalue", value}});
    });
  };
  EXPECT_EQ(ask("findelements", "Grüße 🙂").size(), 1U);
  const auto picture = ask("ai_getscreensnapshot", "");
  EXPECT_GT(picture.at(0).at("output").get<std::string>().size(), 1000U);
  EXPECT_EQ(ask("ai_getscreensnapshot", ""), picture);
  const std::string longText(20'000, 'x');
  EXPECT_EQ(ask("findelements", longText), nlohmann::json::array());
  // Two commands in one piece, the end of the second a piece later.
  EXPECT_EQ(
      asHost([&] {
        player->wire().send("{\"functionname\":\"gettext\"}\r\n{\"functionname\":\"gettext\"}");
        const std::string first = player->wire().readMessage();
        player->wire().send("\r\n");
        return first + player->wire().readMessage();
      }),
      "[][]");
  EXPECT_GT(narrow.cuts(), 1000);
}

INSTANTIATE_TEST_SUITE_P(Bytes, ShortReadsAndWrites, testing::Values(1, 17),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace tarni::test
