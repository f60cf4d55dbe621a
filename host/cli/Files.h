// Files that subcommands write. Failures are std::runtime_errors that name the file.
#pragma once

#include <filesystem>
#include <string>

namespace tarni::host {

void writeFile(const std::filesystem::path& path, const std::string& bytes);

}  // namespace tarni::host
