// Files that subcommands write. Failures are std::runtime_errors that name the file.
#pragma once

#include <filesystem>
#include <string>

namespace tarni::host {

// Throws unless the file can be written; leaves it, or its absence, as it is.
void requireWritable(const std::filesystem::path& path);

void writeFile(const std::filesystem::path& path, const std::string& bytes);

}  // namespace tarni::host
