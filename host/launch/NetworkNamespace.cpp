#include "host/launch/NetworkNamespace.h"

#include <fcntl.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

#include "host/guard/Descriptor.h"

namespace tarni::host {

namespace {

[[noreturn]] void fail(const std::string& what) {
  throw std::runtime_error(what + ": " + std::system_category().message(errno));
}

void writeTo(const char* path, const std::string& text) {
  std::ofstream file(path);
  file << text;
  file.flush();
  if (!file) fail(std::string("cannot write ") + path);
}

void keepIdentity(uid_t user, gid_t group) {
  writeTo("/proc/self/setgroups", "deny");
  writeTo("/proc/self/uid_map", std::to_string(user) + " " + std::to_string(user) + " 1");
  writeTo("/proc/self/gid_map", std::to_string(group) + " " + std::to_string(group) + " 1");
}

void bringLoopbackUp() {
  const Descriptor any(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  ifreq request{};
  std::strncpy(request.ifr_name, "lo", sizeof request.ifr_name - 1);
  if (ioctl(any.number(), SIOCGIFFLAGS, &request) != 0) fail("cannot read the loopback interface");
  request.ifr_flags |= IFF_UP | IFF_RUNNING;
  if (ioctl(any.number(), SIOCSIFFLAGS, &request) != 0) fail("cannot bring the loopback up");
}

std::string namespaceFile(const std::string& process, const char* kind) {
  return "/proc/" + process + "/ns/" + kind;
}

bool isOurs(pid_t pid, const char* kind) {
  struct stat own {};
  struct stat other {};
  return stat(namespaceFile("self", kind).c_str(), &own) == 0 &&
         stat(namespaceFile(std::to_string(pid), kind).c_str(), &other) == 0 &&
         own.st_ino == other.st_ino && own.st_dev == other.st_dev;
}

void join(int descriptor, int kind) {
  if (setns(descriptor, kind) != 0) fail("cannot enter the program's network");
}

}  // namespace

void enterNetworkOfItsOwn() {
  const uid_t user = geteuid();
  const gid_t group = getegid();
  if (user == 0 && unshare(CLONE_NEWNET) == 0) {
    bringLoopbackUp();
    return;
  }
  if (unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) {
    fail(
        "this system gives no network of its own to an ordinary user (user namespaces are off; "
        "sysctl kernel.unprivileged_userns_clone or user.max_user_namespaces, or a container's "
        "settings): run it as root or without --isolated");
  }
  keepIdentity(user, group);
  bringLoopbackUp();
}

bool canEnterNetworkOfItsOwn() {
  const pid_t pid = fork();
  if (pid == 0) {
    try {
      enterNetworkOfItsOwn();
      _exit(0);
    } catch (const std::exception&) {
      _exit(1);
    }
  }
  int status = 1;
  if (pid > 0) waitpid(pid, &status, 0);
  return status == 0;
}

bool isInThisNetwork(pid_t pid) {
  return isOurs(pid, "net");
}

void joinNetworkOf(pid_t pid) {
  if (isInThisNetwork(pid)) return;
  const auto open_ = [pid](const char* kind) {
    return open(namespaceFile(std::to_string(pid), kind).c_str(), O_RDONLY | O_CLOEXEC);
  };
  // Both are opened first: once in the other user namespace the process may no longer look here.
  const Descriptor network(open_("net"));
  if (network.number() < 0) fail("cannot look at the network of process " + std::to_string(pid));
  const Descriptor user(open_("user"));
  if (!isOurs(pid, "user") && user.number() >= 0) join(user.number(), CLONE_NEWUSER);
  join(network.number(), CLONE_NEWNET);
}

}  // namespace tarni::host
