#include "agent/session/Channel.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <future>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "agent/TcpCommunication/GCDAsyncSocket/SocketCalls.h"
#include "agent/session/Client.h"
#include "agent/session/Listener.h"
#include "agent/session/calls/Costs.h"
#include "agent/session/calls/Waits.h"
#include "agent/session/recording/Recording.h"
#include "platform/Foundation/Guarded.h"
#include "platform/Platform.h"

namespace tarni::session {
namespace {

constexpr double kAcceptRetryDelay = 0.5;  // seconds

// The door at which clients come in. On a queue of its own, but for its making and its end.
class Door {
 public:
  explicit Door(const std::string& address)
      : listener_(std::make_unique<Listener>(address)),
        owner_(getpid()),
        queue_(platform::current().dispatch->makeSerialQueue("session channel")),
        source_(platform::current().dispatch->makeReadSource(listener_->descriptor(), queue_,
                                                             [this] { acceptNext(); })) {
    source_->resume();
  }

  // Ready once every client has been sent what was to be sent before, and has let go of the
  // promise.
  std::future<void> flush() {
    auto everyone = std::make_shared<std::promise<void>>();
    std::future<void> flushed = everyone->get_future();
    if (getpid() != owner_) return flushed;
    queue_->async([this, everyone = std::move(everyone)] {
      for (const auto& client : clients_) client->flush(everyone);
    });
    return flushed;
  }

  // A child that was forked has the parent's door, which is not its own to close.
  void close() {
    if (getpid() != owner_) return;
    queue_->sync([this] {
      source_.reset();
      retry_.reset();
      listener_.reset();
    });
  }

 private:
  void acceptNext() {
    FileDescriptor connection = acceptClient(listener_->descriptor());
    if (connection.isOpen()) {
      welcome(std::move(connection));
    } else if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED) {
      return tryAgainLater();
    }
    source_->resume();
  }

  // Without descriptors the client stays pending and would wake us over and over.
  void tryAgainLater() {
    retry_ = platform::current().dispatch->makeTimer(kAcceptRetryDelay, queue_,
                                                     [this] { acceptNext(); });
  }

  void welcome(FileDescriptor connection) {
    if (!listener_->admits(connection.get())) {
      platform::NSLog("Another user's connection to the session channel is refused");
      return;
    }
    const auto client = std::make_shared<Client>(std::move(connection));
    clients_.insert(client);
    client->start([this](const Client* gone) {
      queue_->async([this, gone] {
        std::erase_if(clients_, [gone](const auto& one) { return one.get() == gone; });
      });
    });
  }

  std::unique_ptr<Listener> listener_;
  const pid_t owner_;
  const std::shared_ptr<platform::DispatchQueue> queue_;
  std::unique_ptr<platform::DispatchSource> source_;
  std::unique_ptr<platform::DispatchTimer> retry_;
  std::set<std::shared_ptr<Client>> clients_;
};

// Never destroyed: the agent's threads use it until the process is gone.
Door* door = nullptr;

}  // namespace

void open() {
  const char* const variable = std::getenv("TARNI_SESSION");
  const std::string address = variable ? variable : "";
  unsetenv("TARNI_SESSION");
  if (address.empty()) return;
  try {
    door = new Door(address);
  } catch (const std::exception& error) {
    platform::NSLog("The session channel does not open: %s", error.what());
    return;
  }
  MainWatch::sharedInstance().start();
  Waits::sharedInstance().start();
}

std::future<void> finish() noexcept {
  std::future<void> flushed;
  platform::runGuarded("session channel", [&flushed] {
    if (!door) return;
    Recording::sharedInstance().finish();
    flushed = door->flush();
  });
  return flushed;
}

void close() noexcept {
  platform::runGuarded("session channel", [] {
    if (door) door->close();
  });
}

}  // namespace tarni::session
