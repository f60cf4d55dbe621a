#include "agent/session/Listener.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "agent/TcpCommunication/GCDAsyncSocket/SocketCalls.h"

namespace tarni::session {
namespace {

constexpr std::string_view kTcpPrefix = "tcp:127.0.0.1:";
constexpr int kBacklog = 64;

[[noreturn]] void refuse(const std::string& why) {
  throw std::runtime_error(why);
}

[[noreturn]] void refuseForErrno(const std::string& what) {
  refuse(what + ": " + std::generic_category().message(errno));
}

void listenAt(const FileDescriptor& descriptor, const sockaddr& address, socklen_t length,
              const std::string& name) {
  if (!makeNonBlocking(descriptor.get()) || bind(descriptor.get(), &address, length) != 0) {
    refuseForErrno(name);
  }
  if (listen(descriptor.get(), kBacklog) != 0) refuseForErrno(name);
}

FileDescriptor listenOnPort(const std::string& address) {
  const std::string_view digits = std::string_view(address).substr(kTcpPrefix.size());
  std::uint16_t port = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
  if (error != std::errc() || end != digits.data() + digits.size()) {
    refuse(address + " names no port");
  }
  sockaddr_in name{};
  name.sin_family = AF_INET;
  name.sin_port = htons(port);
  name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  FileDescriptor descriptor = openStreamSocket(AF_INET);
  const int on = 1;
  setsockopt(descriptor.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  listenAt(descriptor, reinterpret_cast<const sockaddr&>(name), sizeof name, address);
  return descriptor;
}

// Who may write into the folder could put a socket of his own there.
void requireOwnFolder(const std::string& path) {
  const std::string folder = path.substr(0, path.rfind('/'));
  mkdir(folder.c_str(), S_IRWXU);
  struct stat info {};
  const bool isFolder = stat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
  if (!isFolder) refuse("the folder " + folder + " cannot be made");
  if (info.st_uid != geteuid() || (info.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
    refuse("the folder " + folder + " must be of mode 0700 and belong to this user");
  }
}

bool isAnswered(const sockaddr_un& name) {
  const FileDescriptor probe = openStreamSocket(AF_UNIX);
  return connect(probe.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0;
}

void clearStale(const std::string& path, const sockaddr_un& name) {
  struct stat info {};
  if (lstat(path.c_str(), &info) != 0) return;
  if (!S_ISSOCK(info.st_mode)) refuse(path + " is there and is no socket");
  if (isAnswered(name)) refuse(path + " is taken by another program");
  unlink(path.c_str());
}

FileDescriptor listenAtPath(const std::string& path) {
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  if (path.front() != '/') refuse(path + " is no absolute path");
  if (path.size() >= sizeof name.sun_path) refuse(path + " is too long for a socket");
  path.copy(name.sun_path, path.size());
  requireOwnFolder(path);
  clearStale(path, name);
  FileDescriptor descriptor = openStreamSocket(AF_UNIX);
  listenAt(descriptor, reinterpret_cast<const sockaddr&>(name), sizeof name, path);
  // Until here the folder's mode has kept others out.
  if (chmod(path.c_str(), S_IRUSR | S_IWUSR) != 0) refuseForErrno(path);
  return descriptor;
}

#ifdef SO_PEERCRED
uid_t userAtTheOtherEnd(int client) {
  ucred peer{};
  socklen_t length = sizeof peer;
  const bool isKnown = getsockopt(client, SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0;
  return isKnown ? peer.uid : static_cast<uid_t>(-1);
}
#else
uid_t userAtTheOtherEnd(int client) {
  uid_t user = static_cast<uid_t>(-1);
  gid_t group = 0;
  getpeereid(client, &user, &group);
  return user;
}
#endif

}  // namespace

Listener::Listener(const std::string& address) {
  if (address.starts_with(kTcpPrefix)) {
#ifndef TARNI_OPENS_SESSION_PORT
    refuse(address + ": a port has no lock, so that only the agent's debug builds open one");
#endif
    descriptor_ = listenOnPort(address);
  } else {
    descriptor_ = listenAtPath(address);
    path_ = address;
  }
}

Listener::~Listener() {
  if (!path_.empty()) unlink(path_.c_str());
}

bool Listener::admits(int client) const {
  if (path_.empty()) return true;
  const uid_t user = userAtTheOtherEnd(client);
  return user == geteuid() || user == 0;
}

}  // namespace tarni::session
