// ProgramWatch: one program as the pages are to see it: its tree, by what changes, its pictures
// whenever something was painted, what it costs. A program at rest is asked nothing but, now and
// then, whether it still answers. One thread.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <set>
#include <span>
#include <string>

#include "host/session_client/SessionClient.h"

namespace tarni::host {

class ProgramWatch {
 public:
  // An event for the pages, and what it takes the place of (see Stream).
  using Tell = std::function<void(const Json& event, const std::string& replaces)>;

  // Connects. Throws as SessionClient.
  ProgramWatch(const std::string& session, Tell tell);

  // What the program tells of itself, as app.info answers it.
  const Json& info() const { return info_; }

  // Everything, for a page that knows nothing. Throws as SessionClient::call does.
  void tellEverything();
  // Nobody looks any more, until the next `tellEverything`.
  void pause();
  // Whether to tell, step by step, what a person does. Throws as SessionClient::call does.
  void record(bool isToRecord);
  // Waits for what comes next, until one of `wakeOn` is readable or the time is over, and tells of
  // it. Throws WireError when the program has ended, RequestError when it does not answer in time:
  // what was to be told then is told by a later call.
  void goOn(std::chrono::milliseconds timeout, std::span<const int> wakeOn);

 private:
  using Time = std::chrono::steady_clock::time_point;

  void watch();
  void take(const Notification& told);
  void takeNotifications(std::chrono::milliseconds timeout, std::span<const int> wakeOn);
  void catchUp();
  void tellTree();
  void tellPictures();
  // Whether it looks otherwise than before.
  bool tellPicture(long window);
  void tellCosts();
  Json ask(const std::string& method, Json parameters = Json::object());

  SessionClient client_;
  Tell tell_;
  Json info_;
  bool isWatching_ = false;
  bool isPolled_ = false;   // the platform does not tell what is painted
  bool hasChanged_ = true;  // something is to be told
  long version_ = 0;
  std::set<long> painted_;
  std::map<long, std::size_t> pictures_;  // of the windows that are shown: a hash of what was told
  Time nextPictures_;
  std::chrono::milliseconds pauseInVain_{0};  // longer with each look that showed nothing new
  Time nextCosts_;
  Time lastAnswer_;
  bool areCostsDue_ = false;
};

}  // namespace tarni::host
