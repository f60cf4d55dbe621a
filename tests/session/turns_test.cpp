// The calls of the session channel in the main queue, beside what else waits there.
#include <string>

#include "agent/session/calls/Call.h"
#include "tests/posix/PosixTest.h"

namespace tarni::test {
namespace {

using session::Call;

class Turns : public PosixTest {
 protected:
  void begin() {
    static const session::Method method{
        .name = "test",
        .description = "",
        .parameters = {},
        .result = "",
        .effect = session::Effect::Asks,
        .handler = [](session::CallRef) -> platform::Task<session::Result> {
          co_return session::Result();
        }};
    const auto note = [this](const std::shared_ptr<session::Result>&,
                             const session::SessionError*) { trace_ += "call "; };
    std::make_shared<Call>(method, session::Json::object(), Call::Owned{}, note)->begin();
  }

  std::string trace_;
};

// A step of the recorder and a command of the playback port would else wait for all of them.
TEST_F(Turns, OfCallsThatCameAtOnceLetOthersInBetween) {
  for (int i = 0; i < 3; ++i) begin();
  mainQueue_.async([this] { trace_ += "port "; });
  EXPECT_TRUE(mainQueue_.runUntil([this] { return trace_.size() == 20; }));
  EXPECT_EQ(trace_, "call port call call ");
}

}  // namespace
}  // namespace tarni::test
