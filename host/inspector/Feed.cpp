#include "host/inspector/Feed.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <array>
#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "host/guard/Printable.h"
#include "host/guard/Words.h"
#include "host/launch/ProgramRegistry.h"
#include "host/wire/WireError.h"

namespace tarni::host {

using std::chrono::milliseconds;

namespace {

constexpr milliseconds kForLong{3'600'000};
constexpr milliseconds kBetweenTries{50};
constexpr milliseconds kBetweenTriesWhenBusy{500};
constexpr std::chrono::seconds kTimeToStart{60};
// Of a program that has closed its channel.
constexpr std::chrono::seconds kTimeToEnd{5};
// Of the same, before it is said to be away.
constexpr milliseconds kTimeToComeBack{500};

constexpr const char* kStates[] = {"none", "starting", "running", "busy", "ended"};

}  // namespace

Feed::Feed(std::vector<std::string> runOptions, std::string advice)
    : runOptions_(std::move(runOptions)),
      advice_(std::move(advice)),
      wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      thread_([this] { work(); }) {}

Feed::~Feed() {
  order([](Orders& orders) { orders.isToStop = true; });
  thread_.join();
}

void Feed::order(const std::function<void(Orders&)>& say) {
  {
    const std::lock_guard lock(mutex_);
    say(orders_);
  }
  eventfd_write(wake_.number(), 1);
}

void Feed::show(Subject subject) {
  order([&](Orders& orders) { orders.subject = std::move(subject); });
}

void Feed::start(std::vector<std::string> command) {
  order([&](Orders& orders) { orders.command = std::move(command); });
}

void Feed::startAgain() {
  std::vector<std::string> command;
  {
    const std::lock_guard lock(mutex_);
    if (state_ != State::Ended) throw std::invalid_argument("the program runs");
    command = subject_.command;
  }
  if (command.empty()) throw std::invalid_argument("it is not known how it was started");
  start(std::move(command));
}

void Feed::record(bool isToRecord) {
  order([&](Orders& orders) { orders.recording = isToRecord; });
}

std::shared_ptr<Stream> Feed::open() {
  auto stream = std::make_shared<Stream>();
  order([&](Orders& orders) { orders.newcomers.push_back(stream); });
  return stream;
}

void Feed::close(const std::shared_ptr<Stream>& stream) {
  stream->close();
  order([&](Orders&) {
    std::erase(streams_, stream);
    std::erase(orders_.newcomers, stream);
  });
}

std::optional<std::string> Feed::session() {
  const std::lock_guard lock(mutex_);
  const bool isThere = state_ == State::Running || state_ == State::Busy;
  return isThere ? std::optional(subject_.session) : std::nullopt;
}

bool Feed::awaitEnd() {
  std::unique_lock lock(mutex_);
  return hasEntered_.wait_for(lock, kTimeToEnd, [this] { return state_ == State::Ended; });
}

void Feed::work() {
  bool goesOn = true;
  while (goesOn) {
    try {
      goesOn = takeOrders();
      if (goesOn) goOn();
    } catch (const RequestError& error) {
      becomeBusy(error.what());
    } catch (const std::exception& error) {
      lose(error.what());
    }
  }
  watch_.reset();
  tool_.reset();
}

// False when it is over.
bool Feed::takeOrders() {
  eventfd_t ignored = 0;
  eventfd_read(wake_.number(), &ignored);
  Orders orders;
  bool isWatched = false;
  {
    const std::lock_guard lock(mutex_);
    orders = std::exchange(orders_, {});
    streams_.insert(streams_.end(), orders.newcomers.begin(), orders.newcomers.end());
    isWatched = !streams_.empty();
    if (orders.isToStop) {
      for (const auto& stream : streams_) stream->close();
    }
  }
  if (orders.isToStop) return false;
  areAllToBeTold_ = areAllToBeTold_ || !orders.newcomers.empty();
  if (orders.command) {
    begin({programName(*orders.command), -1, "", joined(*orders.command), *orders.command});
    tool_.emplace(runLine(*orders.command));
    giveUpStart_ = Clock::now() + kTimeToStart;
    enter(State::Starting);
  } else if (orders.subject) {
    begin(*std::move(orders.subject));
    enter(State::Busy);
  } else if (!orders.newcomers.empty()) {
    tellState();
  }
  if (orders.recording) setRecording(*orders.recording);
  if (watch_ && !isWatched) watch_->pause();
  return true;
}

// What was shown before is let go of.
void Feed::begin(Subject subject) {
  watch_.reset();
  tool_.reset();
  info_ = Json::object();
  const std::lock_guard lock(mutex_);
  subject_ = std::move(subject);
}

std::vector<std::string> Feed::runLine(const std::vector<std::string>& command) const {
  std::vector<std::string> words{"run"};
  words.insert(words.end(), runOptions_.begin(), runOptions_.end());
  words.emplace_back("--");
  words.insert(words.end(), command.begin(), command.end());
  return words;
}

void Feed::goOn() {
  if (state_ == State::Starting) return lookAtStart();
  if (state_ == State::None || state_ == State::Ended) return wait(kForLong);
  const bool isBack = state_ == State::Busy || !watch_;
  if (!watch_) connect();
  if (areAllToBeTold_) watch_->tellEverything();
  areAllToBeTold_ = false;
  const std::array<int, 1> wakeOn{wake_.number()};
  watch_->goOn(isBack ? milliseconds(0) : kForLong, wakeOn);
  if (isBack) enter(State::Running);
}

void Feed::setRecording(bool isToRecord) {
  try {
    if (watch_) watch_->record(isToRecord);
    isRecording_ = isToRecord && watch_;
    why_.clear();
  } catch (const RequestError& error) {
    why_ = error.what();
  }
  tellState();
}

void Feed::lookAtStart() {
  if (auto subject = subjectStartedBy(tool_->pid())) {
    {
      const std::lock_guard lock(mutex_);
      subject->command = subject_.command;
      subject_ = *std::move(subject);
    }
    connect();
    return enter(State::Running);
  }
  const bool hasEnded = tool_->hasEnded(Clock::now());
  if (hasEnded || Clock::now() >= giveUpStart_) {
    const auto why = std::string(hasEnded ? "It ended before the agent was ready. "
                                          : "The agent in it does not answer. ") +
                     advice_ + "It said:\n" + printableLines(tool_->lastOutput());
    std::cerr << "tarni: " << printable(subject_.name) << " did not start. " << why << '\n';
    return enter(State::Ended, why);
  }
  wait(kBetweenTries);
}

void Feed::connect() {
  isRecording_ = false;
  watch_ = std::make_unique<ProgramWatch>(
      subject_.session,
      [this](const Json& event, const std::string& replaces) { tell(event, replaces); });
  info_ = watch_->info();
  const std::lock_guard lock(mutex_);
  areAllToBeTold_ = !streams_.empty();
}

void Feed::becomeBusy(const std::string& why) {
  if (state_ != State::Busy) enter(State::Busy, why);
  wait(kBetweenTriesWhenBusy);
}

// One that ends closes the channel first; one that is stopped, or has only closed it, may come
// back.
void Feed::lose(const std::string& why) {
  if (watch_) lostAt_ = Clock::now();
  watch_.reset();
  if (isAlive(subject_.pid)) {
    return Clock::now() < lostAt_ + kTimeToComeBack ? wait(kBetweenTries) : becomeBusy(why);
  }
  const auto said = tool_ ? printableLines(tool_->lastOutput()) : "";
  enter(State::Ended, said.empty() ? why : "It said last:\n" + said);
}

void Feed::enter(State state, const std::string& why) {
  {
    const std::lock_guard lock(mutex_);
    state_ = state;
  }
  hasEntered_.notify_all();
  why_ = why;
  tellState();
}

void Feed::tellState() {
  tell({{"type", "program"},
        {"state", kStates[static_cast<int>(state_)]},
        {"name", subject_.name},
        {"pid", subject_.pid},
        {"command", subject_.line},
        {"words", subject_.command},
        {"toolkit", textIn(info_, "toolkit")},
        {"agent", textIn(info_, "version")},
        {"hasInput", info_.value("hasInput", false)},
        {"canStart", !subject_.command.empty()},
        {"isRecording", isRecording_},
        {"why", why_}},
       "");
}

void Feed::tell(const Json& event, const std::string& replaces) {
  const auto text = std::make_shared<const std::string>(compact(event));
  const std::lock_guard lock(mutex_);
  for (const auto& stream : streams_) stream->put({text, replaces});
}

void Feed::wait(milliseconds timeout) const {
  pollfd entry{wake_.number(), POLLIN, 0};
  poll(&entry, 1, static_cast<int>(timeout.count()));
}

}  // namespace tarni::host
