#include "host/webdriver/Sessions.h"

#include <nlohmann/json.hpp>
#include <random>

#include "host/guard/Printable.h"
#include "host/webdriver/Error.h"
#include "host/wire/WireError.h"

namespace tarni::host::webdriver {

namespace {

constexpr std::chrono::milliseconds kPauseBetweenLooks{250};

// As the standard wants it: a UUID.
std::string newIdentifier() {
  std::random_device random;
  std::string text = "xxxxxxxx-xxxx-4xxx-8xxx-xxxxxxxxxxxx";
  for (char& c : text) {
    if (c == 'x') c = "0123456789abcdef"[random() % 16];
  }
  return text;
}

long millisecondsSince1970() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

[[noreturn]] void refuseToStart() {
  throw Error("session not created", "the server is about to end");
}

}  // namespace

class Sessions::Place {
 public:
  explicit Place(Sessions& sessions) : sessions_(sessions) {
    const std::lock_guard lock(sessions_.mutex_);
    if (sessions_.isEnding_) refuseToStart();
    if (sessions_.entries_.size() + sessions_.starting_ >= sessions_.most_) {
      throw Error("session not created", counted(sessions_.most_, "session") +
                                             " run already, as many as --max-sessions allows");
    }
    ++sessions_.starting_;
  }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;
  ~Place() {
    const std::lock_guard lock(sessions_.mutex_);
    --sessions_.starting_;
  }

 private:
  Sessions& sessions_;
};

Sessions::Sessions(std::size_t most) : most_(most), watcher_([this] { watch(); }) {}

Sessions::~Sessions() {
  endAll();
  watcher_.join();
}

Json Sessions::answerOf(const Session& session) {
  return {{"sessionId", session.id()}, {"capabilities", session.capabilities()}};
}

Json Sessions::create(const Json& parameters, const std::string& key) {
  if (key.empty()) return begin(parameters, key);
  std::promise<Json> promise;
  std::unique_lock lock(mutex_);
  const auto [known, isFirst] = answers_.try_emplace(key, promise.get_future().share());
  const auto answer = known->second;
  lock.unlock();
  if (!isFirst) return answer.get();
  try {
    promise.set_value(begin(parameters, key));
  } catch (...) {
    lock.lock();
    answers_.erase(key);
    promise.set_exception(std::current_exception());
  }
  return answer.get();
}

Json Sessions::begin(const Json& parameters, const std::string& key) {
  const auto wanted = Capabilities::match(parameters);
  const Place place(*this);
  const auto entry = std::make_shared<Entry>();
  entry->timeout = wanted.newCommandTimeout;
  entry->key = key;
  entry->created = millisecondsSince1970();
  entry->session = std::make_unique<Session>(newIdentifier(), wanted, starter_, stop_.get_token());
  entry->lastUsed = Clock::now();
  const std::lock_guard lock(mutex_);
  if (isEnding_) refuseToStart();
  entries_.emplace(entry->session->id(), entry);
  return answerOf(*entry->session);
}

std::shared_ptr<Sessions::Entry> Sessions::find(const std::string& id) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(id);
  if (found == entries_.end()) throw Error("invalid session id", "there is no session " + id);
  ++found->second->waiting;
  return found->second;
}

std::shared_ptr<Sessions::Entry> Sessions::take(const std::string& id) {
  const std::lock_guard lock(mutex_);
  const auto found = entries_.find(id);
  if (found == entries_.end()) return nullptr;
  auto entry = std::move(found->second);
  entries_.erase(found);
  answers_.erase(entry->key);
  return entry;
}

Json Sessions::run(const std::string& id, const std::function<Json(Session&)>& command) {
  const auto entry = find(id);
  const std::lock_guard lock(entry->running);
  struct Use {
    Entry& entry;
    ~Use() {
      entry.lastUsed = Clock::now();
      --entry.waiting;
    }
  } const use{*entry};
  try {
    return command(*entry->session);
  } catch (const WireError& error) {
    const auto said = entry->session->program().lastOutput();
    if (!end(id)) throw Error("invalid session id", "the session was ended meanwhile");
    throw Error("unknown error", "the session is over, as its program is gone or hangs: " +
                                     std::string(error.what()) +
                                     (said.empty() ? "" : "; it said:\n" + said));
  }
}

bool Sessions::end(const std::string& id) {
  const auto entry = take(id);
  if (entry) entry->session->program().end();
  return entry != nullptr;
}

// All at the same time, as one that does not want to end takes seconds.
void Sessions::endAll() {
  std::map<std::string, std::shared_ptr<Entry>> all;
  {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
    all.swap(entries_);
    answers_.clear();
  }
  ending_.notify_all();
  std::vector<std::jthread> threads;
  threads.emplace_back([this] { stop_.request_stop(); });
  for (const auto& [id, entry] : all) {
    threads.emplace_back([&program = entry->session->program()] { program.end(); });
  }
}

bool Sessions::isFull() {
  const std::lock_guard lock(mutex_);
  return entries_.size() + starting_ >= most_;
}

Json Sessions::list() {
  const std::lock_guard lock(mutex_);
  Json all = Json::array();
  for (const auto& [id, entry] : entries_) {
    all.push_back({{"id", id},
                   {"capabilities", entry->session->capabilities()},
                   {"created", entry->created}});
  }
  return all;
}

void Sessions::watch() {
  std::unique_lock lock(mutex_);
  while (!ending_.wait_for(lock, kPauseBetweenLooks, [this] { return isEnding_; })) {
    lock.unlock();
    endUnused();
    lock.lock();
  }
}

void Sessions::endUnused() {
  std::vector<std::string> unused;
  {
    const std::lock_guard lock(mutex_);
    for (const auto& [id, entry] : entries_) {
      const bool hasLimit = entry->timeout.count() > 0;
      const bool isIdle = Clock::now() - entry->lastUsed.load() > entry->timeout;
      if (hasLimit && entry->waiting == 0 && isIdle) unused.push_back(id);
    }
  }
  for (const auto& id : unused) end(id);
}

}  // namespace tarni::host::webdriver
