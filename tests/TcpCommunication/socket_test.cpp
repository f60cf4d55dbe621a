#include <gmock/gmock.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "agent/TcpCommunication/GCDAsyncSocket/GCDAsyncSocket.h"
#include "tests/posix/PosixTest.h"
#include "tests/support/Wire.h"

namespace tarni::test {
namespace {

using testing::ElementsAre;

constexpr double kNoTimeout = -1;
constexpr std::size_t kMoreThanASocketHolds = 24UL * 1024 * 1024;

// A delegate that writes down what it is told.
class Witness : public GCDAsyncSocketDelegate {
 public:
  explicit Witness(std::shared_ptr<platform::DispatchQueue> queue) : queue_(std::move(queue)) {}

  void socketDidAcceptNewSocket(const GCDAsyncSocketRef& /*sock*/,
                                const GCDAsyncSocketRef& newSocket) override {
    const std::lock_guard lock(mutex_);
    accepted_.push_back(newSocket);
    note("accept");
  }
  void socketDidReadDataWithTag(const GCDAsyncSocketRef& /*sock*/, std::string& data,
                                long tag) override {
    const std::lock_guard lock(mutex_);
    note("read " + std::to_string(tag) + " " + data);
  }
  void socketDidWriteDataWithTag(const GCDAsyncSocketRef& /*sock*/, long tag) override {
    const std::lock_guard lock(mutex_);
    note("write " + std::to_string(tag));
  }
  double socketShouldTimeoutReadWithTagElapsedBytesDone(const GCDAsyncSocketRef& /*sock*/, long tag,
                                                        double elapsed,
                                                        std::size_t bytesDone) override {
    const std::lock_guard lock(mutex_);
    note("timeout " + std::to_string(tag) + " " + std::to_string(bytesDone));
    elapsed_.push_back(elapsed);
    return elapsed_.size() == 1 ? 0.02 : 0;
  }
  void socketDidDisconnectWithError(const GCDAsyncSocketRef& /*sock*/,
                                    const std::optional<NSError>& error) override {
    const std::lock_guard lock(mutex_);
    note("disconnect " + (error ? error->domain + " " + std::to_string(error->code) : "nil"));
  }

  bool waitForEvents(std::size_t count) {
    std::unique_lock lock(mutex_);
    return noted_.wait_for(lock, std::chrono::seconds(20), [&] { return events_.size() >= count; });
  }
  // What came until now, once there are so many.
  std::vector<std::string> events(std::size_t count) {
    waitForEvents(count);
    const std::lock_guard lock(mutex_);
    return events_;
  }
  GCDAsyncSocketRef accepted(std::size_t index = 0) {
    waitForEvents(1);
    const std::lock_guard lock(mutex_);
    return index < accepted_.size() ? accepted_[index] : nullptr;
  }
  void releaseAccepted() {
    const std::lock_guard lock(mutex_);
    accepted_.clear();
  }
  std::vector<double> elapsed() {
    const std::lock_guard lock(mutex_);
    return elapsed_;
  }

 private:
  void note(std::string event) {
    EXPECT_TRUE(queue_->isCurrent());
    events_.push_back(std::move(event));
    noted_.notify_all();
  }

  const std::shared_ptr<platform::DispatchQueue> queue_;
  std::mutex mutex_;
  std::condition_variable noted_;
  std::vector<std::string> events_;
  std::vector<GCDAsyncSocketRef> accepted_;
  std::vector<double> elapsed_;
};

class SocketTest : public PosixTest {
 protected:
  SocketTest() {
    NSError error;
    EXPECT_TRUE(listener_->acceptOnPortError(0, &error)) << error.description();
    port_ = listener_->localPort();
  }
  ~SocketTest() override {
    queue_->sync([] {});
    witness_->releaseAccepted();
  }

  GCDAsyncSocketRef connection() { return witness_->accepted(); }
  void settle() {
    queue_->sync([] {});
  }

  const std::shared_ptr<platform::DispatchQueue> queue_ = dispatch_.makeSerialQueue("delegate");
  const std::shared_ptr<Witness> witness_ = std::make_shared<Witness>(queue_);
  GCDAsyncSocketRef listener_ = std::make_shared<GCDAsyncSocket>(witness_, queue_);
  std::uint16_t port_ = 0;
};

class SocketFamilyTest : public SocketTest, public testing::WithParamInterface<int> {};

TEST_P(SocketFamilyTest, BothFamiliesAreServed) {
  const Wire client(port_, std::chrono::seconds(20), GetParam());
  const GCDAsyncSocketRef sock = connection();
  ASSERT_NE(sock, nullptr);
  const std::string address = GetParam() == AF_INET ? "127.0.0.1" : "::1";
  EXPECT_EQ(sock->localHost(), address);
  EXPECT_EQ(sock->localPort(), port_);
  EXPECT_EQ(sock->connectedHost(), address);
  sock->writeDataWithTimeoutTag("hello", kNoTimeout, 5);
  EXPECT_EQ(client.read(5), "hello");
  EXPECT_THAT(witness_->events(2), ElementsAre("accept", "write 5"));
}

INSTANTIATE_TEST_SUITE_P(Families, SocketFamilyTest, testing::Values(AF_INET, AF_INET6),
                         [](const auto& info) { return info.param == AF_INET ? "v4" : "v6"; });

TEST_F(SocketTest, WritesLargerThanTheSocketHoldsArriveWholeAndInOrder) {
  const Wire client(port_);
  const std::string large(kMoreThanASocketHolds, 'x');
  connection()->writeDataWithTimeoutTag(large, kNoTimeout, 1);
  connection()->writeDataWithTimeoutTag("tail", kNoTimeout, 2);
  EXPECT_EQ(connection()->pendingWrites().messages, 2U);
  EXPECT_TRUE(client.read(large.size()) == large);
  EXPECT_EQ(client.read(4), "tail");
  EXPECT_THAT(witness_->events(3), ElementsAre("accept", "write 1", "write 2"));
}

TEST_F(SocketTest, AResetPeerIsAnErrorAndNoSignal) {
  Wire client(port_);
  const std::string large(kMoreThanASocketHolds, 'x');
  connection()->writeDataWithTimeoutTag(large, kNoTimeout, 1);
  connection()->writeDataWithTimeoutTag(large, kNoTimeout, 2);
  client.read(1);
  client.reset();
  const std::vector<std::string> events = witness_->events(2);
  ASSERT_EQ(events.size(), 2U);
  EXPECT_TRUE(events[1].starts_with("disconnect NSPOSIXErrorDomain ")) << events[1];
  connection()->writeDataWithTimeoutTag("into the void", kNoTimeout, 3);
  connection()->disconnect();
  settle();
  EXPECT_EQ(witness_->events(2).size(), 2U);
  EXPECT_EQ(connection()->pendingWrites().messages, 0U);
  EXPECT_EQ(connection()->pendingWrites().bytes, 0U);
}

TEST_F(SocketTest, AReadMayBeExtendedBeforeItTimesOut) {
  const Wire client(port_);
  client.send("abc");
  connection()->readDataToDataWithTimeoutTag(GCDAsyncSocket::CRLFData(), 0.03, 4);
  EXPECT_EQ(witness_->events(4).back(), "disconnect GCDAsyncSocketErrorDomain 4");
  const std::vector<double> elapsed = witness_->elapsed();
  ASSERT_EQ(elapsed.size(), 2U);
  EXPECT_DOUBLE_EQ(elapsed[0], 0.03);
  EXPECT_DOUBLE_EQ(elapsed[1], 0.05);
  EXPECT_TRUE(client.seesClose());
}

TEST_F(SocketTest, AWriteTimesOut) {
  const Wire client(port_);
  connection()->writeDataWithTimeoutTag(std::string(kMoreThanASocketHolds, 'x'), 0.03, 1);
  EXPECT_THAT(witness_->events(2), ElementsAre("accept", "disconnect GCDAsyncSocketErrorDomain 5"));
}

}  // namespace
}  // namespace tarni::test
