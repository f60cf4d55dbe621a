#include "host/source/XPathLiteral.h"

#include <algorithm>

namespace tarni::host {

// XPath has no escapes: what holds both quotes is put together.
std::string xpathLiteral(const std::string& text) {
  if (text.find('\'') == std::string::npos) return "'" + text + "'";
  if (text.find('"') == std::string::npos) return '"' + text + '"';
  std::string parts;
  for (std::size_t begin = 0; begin <= text.size();) {
    const auto end = std::min(text.find('\'', begin), text.size());
    parts += (begin == 0 ? "'" : ", \"'\", '") + text.substr(begin, end - begin) + "'";
    begin = end + 1;
  }
  return "concat(" + parts + ")";
}

}  // namespace tarni::host
