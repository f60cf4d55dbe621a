// Calls: the requests of pages, each over a connection to the program that serves one at a time.
// Any thread.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "host/session_client/SessionClient.h"

namespace tarni::host {

class Calls {
 public:
  // Does something with a connection to that program, and keeps it for the next one unless it
  // fails. Throws as SessionClient.
  Json with(const std::string& session, const std::function<Json(SessionClient&)>& work);

 private:
  std::unique_ptr<SessionClient> take(const std::string& session);

  std::mutex mutex_;
  std::string session_;
  std::vector<std::unique_ptr<SessionClient>> free_;
};

}  // namespace tarni::host
