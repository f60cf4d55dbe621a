// Feed: what all pages are told, and which program it is about: one that runs, or one that is
// started and, when it has ended, started again. A thread of its own works with the program; the
// functions are for any thread.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "host/guard/Descriptor.h"
#include "host/inspector/ProgramWatch.h"
#include "host/inspector/Stream.h"
#include "host/inspector/Subject.h"
#include "host/launch/ToolProcess.h"

namespace tarni::host {

class Feed {
 public:
  // `runOptions` go to the `tarni run` of programs that are started; `advice` is given when one
  // does not come up, "" for none.
  Feed(std::vector<std::string> runOptions, std::string advice);
  Feed(const Feed&) = delete;
  Feed& operator=(const Feed&) = delete;
  // Ends the program that it has started.
  ~Feed();

  void show(Subject subject);
  void start(std::vector<std::string> command);
  // The program that was shown last, as it was started. Throws std::invalid_argument when it runs,
  // or when it is not known how.
  void startAgain();

  // Whether pages are told what a person does.
  void record(bool isToRecord);

  // A page that wants to be told, from the beginning; until it is closed.
  std::shared_ptr<Stream> open();
  void close(const std::shared_ptr<Stream>& stream);

  // The address of the program's session channel; null while none runs.
  std::optional<std::string> session();
  // Waits for the end of a program that has closed its channel; false when it goes on.
  bool awaitEnd();

 private:
  enum class State { None, Starting, Running, Busy, Ended };
  struct Orders {
    std::optional<Subject> subject;
    std::optional<std::vector<std::string>> command;
    std::optional<bool> recording;
    std::vector<std::shared_ptr<Stream>> newcomers;
    bool isToStop = false;
  };

  void order(const std::function<void(Orders&)>& say);
  void work();
  bool takeOrders();
  void begin(Subject subject);
  std::vector<std::string> runLine(const std::vector<std::string>& command) const;
  void goOn();
  void setRecording(bool isToRecord);
  void lookAtStart();
  void connect();
  void becomeBusy(const std::string& why);
  void lose(const std::string& why);
  void enter(State state, const std::string& why = "");
  void tellState();
  void tell(const Json& event, const std::string& replaces);
  void wait(std::chrono::milliseconds timeout) const;

  const std::vector<std::string> runOptions_;
  const std::string advice_;
  const Descriptor wake_;

  std::mutex mutex_;  // guards the next four
  Orders orders_;
  std::vector<std::shared_ptr<Stream>> streams_;
  State state_ = State::None;
  Subject subject_;

  std::condition_variable hasEntered_;  // another state

  // Of the thread alone.
  std::string why_;
  Json info_ = Json::object();  // what the program told of itself last
  std::optional<ToolProcess> tool_;
  std::chrono::steady_clock::time_point giveUpStart_;
  std::unique_ptr<ProgramWatch> watch_;
  std::chrono::steady_clock::time_point lostAt_;  // the last one
  bool areAllToBeTold_ = false;
  bool isRecording_ = false;

  std::thread thread_;
};

}  // namespace tarni::host
