#include "host/cli/Listening.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <csignal>
#include <ctime>
#include <iostream>
#include <vector>

#include "host/cli/Invocation.h"
#include "host/guard/EndSignals.h"
#include "host/wire/WireError.h"

namespace tarni::host {

namespace {

constexpr milliseconds kForEver = std::chrono::hours(24);
// For what has come already when the end is asked for.
constexpr milliseconds kTimeToFinish{200};

// A descriptor that becomes readable when the process is asked to end; it does not end by it while
// this lives.
class EndRequests {
 public:
  EndRequests() {
    const sigset_t set = endSignals();
    sigprocmask(SIG_BLOCK, &set, &before_);
    descriptor_ = signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
  }
  EndRequests(const EndRequests&) = delete;
  EndRequests& operator=(const EndRequests&) = delete;
  ~EndRequests() {
    take();
    close(descriptor_);
    sigprocmask(SIG_SETMASK, &before_, nullptr);
  }

  int descriptor() const { return descriptor_; }
  bool take() const {
    signalfd_siginfo info{};
    return read(descriptor_, &info, sizeof info) == sizeof info;
  }

 private:
  sigset_t before_{};
  int descriptor_ = -1;
};

// Lines from standard input, read without ever blocking longer than what is there takes.
class TypedLines {
 public:
  bool isOpen() const { return isOpen_; }

  void take(const std::function<void(const std::string&)>& onLine) {
    std::array<char, 4096> bytes{};
    const auto count = read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0) {
      isOpen_ = false;
      return;
    }
    pending_.append(bytes.data(), static_cast<std::size_t>(count));
    for (auto end = pending_.find('\n'); end != std::string::npos; end = pending_.find('\n')) {
      const auto line = pending_.substr(0, end);
      pending_.erase(0, end + 1);
      onLine(line);
    }
  }

 private:
  bool isOpen_ = true;
  std::string pending_;
};

bool isReadable(int descriptor) {
  pollfd entry{descriptor, POLLIN, 0};
  return poll(&entry, 1, 0) > 0;
}

// A background job that reads from its terminal is stopped.
bool mayReadStandardInput() {
  return isatty(STDIN_FILENO) != 1 || tcgetpgrp(STDIN_FILENO) == getpgrp();
}

}  // namespace

void Listening::declare(CLI::App& parser, const std::string& things) {
  parser.add_option("--count", count_, "end after so many " + things)
      ->type_name("N")
      ->check(CLI::PositiveNumber.description(""));
  parser.add_option("--seconds", seconds_, "end after this time")
      ->type_name("N")
      ->check(CLI::NonNegativeNumber.description(""));
}

void Listening::run(Invocation& invocation, const Handlers& handlers) const {
  const EndRequests endRequests;
  TypedLines lines;
  const bool asksPerson = handlers.onLine && mayReadStandardInput();
  auto deadline = Clock::now() + (seconds_ ? fromSeconds(*seconds_) : kForEver);
  int seen = 0;
  while ((!count_ || seen < *count_) && Clock::now() < deadline) {
    std::vector<int> wakeOn{endRequests.descriptor()};
    if (asksPerson && lines.isOpen()) wakeOn.push_back(STDIN_FILENO);
    std::optional<int> things;
    try {
      things = handlers.next(std::chrono::ceil<milliseconds>(deadline - Clock::now()), wakeOn);
    } catch (const WireError& error) {
      if (count_) throw;
      std::cerr << "tarni: " << error.what() << " (it has ended, or playback has begun)\n";
      return;
    }
    if (things) {
      seen += *things;
      std::cout.flush();
      if (endRequests.take()) deadline = std::min(deadline, Clock::now() + kTimeToFinish);
    } else if (endRequests.take()) {
      break;
    } else if (wakeOn.size() > 1 && isReadable(STDIN_FILENO)) {
      lines.take(handlers.onLine);
    }
  }
  if (count_ && seen < *count_) invocation.result = ExitCode::No;
}

std::function<std::optional<int>(milliseconds, std::span<const int>)> messagesOf(
    RecorderClient& recorder, std::function<int(const RecorderClient::Message&)> onMessage) {
  return [&recorder, onMessage = std::move(onMessage)](
             milliseconds timeout, std::span<const int> wakeOn) -> std::optional<int> {
    const auto message = recorder.next(timeout, wakeOn);
    return message ? std::optional(onMessage(*message)) : std::nullopt;
  };
}

std::string timeOfDay() {
  const auto now = std::chrono::system_clock::now();
  const auto seconds = std::chrono::system_clock::to_time_t(now);
  const auto fraction =
      std::chrono::duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000;
  std::tm local{};
  localtime_r(&seconds, &local);
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%02d:%02d:%02d.%03d", local.tm_hour, local.tm_min,
                local.tm_sec, static_cast<int>(fraction));
  return text.data();
}

}  // namespace tarni::host
