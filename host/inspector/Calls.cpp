#include "host/inspector/Calls.h"

#include <utility>

namespace tarni::host {

namespace {

constexpr std::chrono::milliseconds kTimeToConnect{3'000};
constexpr std::size_t kMostKept = 4;

}  // namespace

Json Calls::with(const std::string& session, const std::function<Json(SessionClient&)>& work) {
  auto client = take(session);
  Json answer;
  std::exception_ptr refusal;
  try {
    answer = work(*client);
  } catch (const RequestError&) {
    refusal = std::current_exception();  // the connection is as good as before
  }
  {
    const std::lock_guard lock(mutex_);
    if (session_ == session && free_.size() < kMostKept) free_.push_back(std::move(client));
  }
  if (refusal) std::rethrow_exception(refusal);
  return answer;
}

std::unique_ptr<SessionClient> Calls::take(const std::string& session) {
  {
    const std::lock_guard lock(mutex_);
    if (session_ != session) free_.clear();
    session_ = session;
    if (!free_.empty()) {
      auto client = std::move(free_.back());
      free_.pop_back();
      return client;
    }
  }
  return std::make_unique<SessionClient>(session, kTimeToConnect);
}

}  // namespace tarni::host
