// PageFiles: the page of the inspector, as the build has put it into this tool.
#pragma once

#include <span>
#include <string_view>

namespace tarni::host {

struct PageFile {
  std::string_view name;  // "index.html"
  std::string_view type;
  std::string_view contents;
};

// None when the build had not got what the page is built with.
std::span<const PageFile> pageFiles();

}  // namespace tarni::host
