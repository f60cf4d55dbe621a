// Sessions: those that run, by identifier: at most so many at a time, and none longer than its
// client cares for it. Any thread.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

#include "host/guard/Clock.h"
#include "host/webdriver/Session.h"

namespace tarni::host::webdriver {

class Sessions {
 public:
  explicit Sessions(std::size_t most);
  Sessions(const Sessions&) = delete;
  Sessions& operator=(const Sessions&) = delete;
  ~Sessions();

  // Starts one and answers its identifier and capabilities. A request that comes again with the
  // same key, be the first still on its way, gets the answer of the first. Throws Error.
  Json create(const Json& parameters, const std::string& key);
  // Runs a command of a session, when no other one of it runs. Throws Error ("invalid session id")
  // and whatever the command throws; after a WireError the session is gone.
  Json run(const std::string& id, const std::function<Json(Session&)>& command);
  // Ends it; false when there is none. A command of it that runs fails.
  bool end(const std::string& id);
  // Ends all of them, those that are starting as well; there are no new ones then.
  void endAll();

  std::size_t most() const { return most_; }
  bool isFull();
  // Identifier, capabilities and time of creation of each.
  Json list();

 private:
  struct Entry {
    std::unique_ptr<Session> session;
    std::mutex running;
    std::atomic<Clock::time_point> lastUsed;
    std::atomic<int> waiting = 0;  // commands that run or wait for it
    std::chrono::seconds timeout;
    std::string key;
    long created = 0;  // milliseconds since 1970
  };

  // A place among the sessions, given back unless it is kept.
  class Place;

  std::shared_ptr<Entry> find(const std::string& id);
  std::shared_ptr<Entry> take(const std::string& id);
  Json begin(const Json& parameters, const std::string& key);
  static Json answerOf(const Session& session);
  void watch();
  void endUnused();

  const std::size_t most_;
  Starter starter_;
  std::mutex mutex_;
  std::map<std::string, std::shared_ptr<Entry>> entries_;
  std::map<std::string, std::shared_future<Json>>
      answers_;  // of sessions that were asked for with a key
  std::size_t starting_ = 0;
  std::stop_source stop_;
  std::condition_variable ending_;
  bool isEnding_ = false;
  std::thread watcher_;
};

}  // namespace tarni::host::webdriver
