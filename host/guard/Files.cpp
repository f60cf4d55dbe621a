#include "host/guard/Files.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

#include "host/guard/Descriptor.h"
#include "host/guard/Json.h"

namespace tarni::host {

namespace fs = std::filesystem;

namespace {

bool isTrusted(uid_t owner) {
  return owner == geteuid() || owner == 0;
}

// Where the path leads by links of this user's and root's. Each is looked at and read as one, so
// that nobody can change it in between.
fs::path followed(fs::path path) {
  constexpr int kMostLinks = 40;
  for (int links = 0; links < kMostLinks; ++links) {
    const Descriptor link(open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    struct stat info {};
    if (link.number() < 0 || fstat(link.number(), &info) != 0 || !S_ISLNK(info.st_mode)) {
      return path;
    }
    if (!isTrusted(info.st_uid)) {
      throw std::runtime_error("cannot write " + path.string() + ": it is a link that user " +
                               std::to_string(info.st_uid) + " laid");
    }
    std::array<char, PATH_MAX> target{};
    const auto size = readlinkat(link.number(), "", target.data(), target.size());
    if (size <= 0) return path;
    path = path.parent_path() / std::string(target.data(), static_cast<std::size_t>(size));
  }
  throw std::runtime_error("cannot write " + path.string() + ": too many links");
}

std::string whyForeign(const struct stat& info) {
  if (info.st_uid != geteuid()) return "it belongs to user " + std::to_string(info.st_uid);
  return (info.st_mode & (S_IWGRP | S_IWOTH)) != 0 ? "others may write to it" : "";
}

[[noreturn]] void failToRead(const fs::path& path) {
  const auto reason = std::system_category().message(errno);
  throw std::runtime_error("cannot read " + path.string() + ": " + reason);
}

}  // namespace

PrivateFile::PrivateFile(const fs::path& path) : path_(path), place_(followed(path)) {
  struct stat info {};
  const bool isThere = lstat(place_.c_str(), &info) == 0;
  if (isThere && S_ISFIFO(info.st_mode) && !isTrusted(info.st_uid)) {
    throw std::runtime_error("cannot write " + path_.string() + ": it is a pipe that user " +
                             std::to_string(info.st_uid) + " laid");
  }
  if (isThere && !S_ISREG(info.st_mode)) {
    openPlace();
  } else {
    openPart();
  }
  if (descriptor_ < 0) fail();
}

void PrivateFile::openPlace() {
  descriptor_ = open(place_.c_str(), O_WRONLY | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC);
}

// By a name that nobody can guess, for this user alone.
void PrivateFile::openPart() {
  std::string name = place_.parent_path() / ".tarni-XXXXXX";
  descriptor_ = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor_ >= 0) part_ = name;
}

PrivateFile::~PrivateFile() {
  if (descriptor_ >= 0) close(descriptor_);
  if (!part_.empty()) unlink(part_.c_str());
}

void PrivateFile::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::write(descriptor_, bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR) fail();
    if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void PrivateFile::write(std::string_view bytes, off_t at) {
  if (lseek(descriptor_, at, SEEK_SET) < 0) fail();
  write(bytes);
}

void PrivateFile::keep() {
  if (part_.empty()) return;
  if (rename(part_.c_str(), place_.c_str()) != 0) fail();
  part_.clear();
}

void PrivateFile::fail() const {
  throw std::runtime_error("cannot write " + path_.string() + ": " +
                           std::system_category().message(errno));
}

void requireWritable(const fs::path& path) {
  const PrivateFile tried(path);
}

void writePrivateFile(const fs::path& path, std::string_view bytes) {
  PrivateFile file(path);
  file.write(bytes);
  file.keep();
}

void makePrivateFolder(const fs::path& path) {
  const auto folder = followed(path);
  fs::path made;
  for (const auto& part : folder) {
    made /= part;
    if (mkdir(made.c_str(), S_IRWXU) != 0 && errno != EEXIST) break;
  }
  if (!fs::is_directory(folder))
    throw std::runtime_error("cannot make the folder " + path.string());
}

ReadFile readFile(const fs::path& path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat info {};
  if (file.number() < 0 || fstat(file.number(), &info) != 0) failToRead(path);
  ReadFile result{"", whyForeign(info)};
  std::array<char, 65536> bytes{};
  while (true) {
    const auto count = read(file.number(), bytes.data(), bytes.size());
    if (count == 0) return result;
    if (count < 0 && errno != EINTR) failToRead(path);
    if (count > 0) result.text.append(bytes.data(), static_cast<std::size_t>(count));
    if (result.text.size() > kMostBytes) {
      throw std::runtime_error("cannot read " + path.string() + ": it is too large");
    }
  }
}

}  // namespace tarni::host
