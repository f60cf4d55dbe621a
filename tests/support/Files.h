// Files and folders of tests.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace tarni::test {

// Of a file, those of /proc too; "" when there is none.
inline std::string contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// A new folder of this user's alone, gone with its owner.
class Folder {
 public:
  Folder() {
    std::string made = std::filesystem::temp_directory_path() / "tarni-XXXXXX";
    if (!mkdtemp(made.data())) throw std::runtime_error("no folder");
    path = made;
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }

  std::filesystem::path path;
};

}  // namespace tarni::test
