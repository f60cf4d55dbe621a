#include "host/guard/Base64.h"

#include <netinet/in.h>
#include <resolv.h>

namespace tarni::host {

std::string decodeBase64(const std::string& text) {
  std::string bytes(text.size() / 4 * 3 + 3, '\0');
  const int count =
      b64_pton(text.c_str(), reinterpret_cast<unsigned char*>(bytes.data()), bytes.size());
  bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return bytes;
}

}  // namespace tarni::host
