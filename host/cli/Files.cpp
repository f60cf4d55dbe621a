#include "host/cli/Files.h"

#include <fstream>
#include <stdexcept>

namespace tarni::host {

void requireWritable(const std::filesystem::path& path) {
  const bool existed = std::filesystem::exists(path);
  if (!std::ofstream(path, std::ios::app))
    throw std::runtime_error("cannot write " + path.string());
  if (!existed) std::filesystem::remove(path);
}

void writeFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path.string());
}

}  // namespace tarni::host
