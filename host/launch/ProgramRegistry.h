// ProgramRegistry: the programs of this user that `tarni run` has started, by name, so that other
// commands find their session channels and their networks. One small JSON file a program in
// $XDG_RUNTIME_DIR/tarni or /tmp/tarni-UID; what ended without cleaning up is recognised by its
// start time and forgotten. Any thread.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tarni::host {

struct RegisteredProgram {
  std::string name;
  pid_t pid = -1;
  std::string command;
  bool isIsolated = true;  // in a network of its own
};

// False for a process that has ended, also when nobody has waited for it.
bool isAlive(pid_t pid);

class ProgramRegistry {
 public:
  // Makes the folder when it is not there. Throws std::runtime_error when it is not this user's.
  ProgramRegistry();
  explicit ProgramRegistry(std::filesystem::path folder);

  // Throws std::invalid_argument for what cannot be a program's name.
  static void checkName(const std::string& name);
  // Throws std::runtime_error when a running program has the name.
  void checkFree(const std::string& name) const;
  // `wish` or, when a running program has it, the first free one of "wish-2", "wish-3", …
  std::string freeName(const std::string& wish) const;

  void add(const RegisteredProgram& program) const;
  void remove(const std::string& name) const;
  // Null when no running program has the name.
  std::optional<RegisteredProgram> find(const std::string& name) const;
  // The same by name or by the number of the process.
  std::optional<RegisteredProgram> findByNameOrProcess(const std::string& word) const;
  std::vector<RegisteredProgram> all() const;
  // Where SessionClient finds the program's session channel. Null when it has none (yet).
  std::optional<std::string> sessionOf(const RegisteredProgram& program) const;
  // Where commands with another XDG_RUNTIME_DIR find a running program of that name; null when none
  // of this user's `tarni run` has such a one.
  std::optional<std::filesystem::path> folderElsewhere(const std::string& name) const;
  const std::filesystem::path& folder() const { return folder_; }

 private:
  std::filesystem::path fileOf(const std::string& name) const;

  std::filesystem::path folder_;
};

}  // namespace tarni::host
