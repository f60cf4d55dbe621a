#include "host/launch/Reaper.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <exception>
#include <stdexcept>

#include "host/launch/StandAside.h"

namespace tarni::host {

namespace {

constexpr pid_t kNothingToDo = -1;  // as a note
constexpr int kTimeToEndMilliseconds = 5'000;

void tell(int notes, pid_t note) {
  [[maybe_unused]] const auto count = write(notes, &note, sizeof note);
}

// False at the end of the stream: nobody can write any more.
bool readNote(int notes, pid_t& note) {
  while (true) {
    const auto count = read(notes, &note, sizeof note);
    if (count >= 0 || errno != EINTR) return count == sizeof note;
  }
}

bool hasEnded(int program, int milliseconds) {
  pollfd entry{program, POLLIN, 0};
  return poll(&entry, 1, milliseconds) != 0;
}

void awaitEnd(int program, bool endsProgram) {
  const auto send = [program](int number) {
    syscall(SYS_pidfd_send_signal, program, number, nullptr, 0);
  };
  if (endsProgram) {
    send(SIGTERM);
    if (!hasEnded(program, kTimeToEndMilliseconds)) send(SIGKILL);
  }
  hasEnded(program, -1);
}

[[noreturn]] void reap(int notes, bool endsProgram, const std::function<void(pid_t)>& cleanUp) {
  standAside(notes);
  pid_t pid = 0;
  int program = -1;
  for (pid_t note = 0; readNote(notes, note);) {
    if (note == kNothingToDo) _exit(0);
    pid = note;
    program = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
  }
  if (program >= 0) awaitEnd(program, endsProgram);
  try {
    cleanUp(pid);
  } catch (const std::exception&) {
    // There is nobody to be told.
  }
  _exit(0);
}

}  // namespace

Reaper::Reaper(bool endsProgram, const std::function<void(pid_t program)>& cleanUp) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("cannot make a pipe");
  pid_ = fork();
  if (pid_ == 0) reap(ends[0], endsProgram, cleanUp);
  close(ends[0]);
  notes_ = ends[1];
  if (pid_ < 0) {
    close(notes_);
    throw std::runtime_error("cannot start another process");
  }
}

Reaper::~Reaper() {
  tell(notes_, kNothingToDo);
  close(notes_);
  waitpid(pid_, nullptr, 0);
}

void Reaper::watch(pid_t program) const {
  tell(notes_, program);
}

}  // namespace tarni::host
