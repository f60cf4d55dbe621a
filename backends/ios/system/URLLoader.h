// URLLoader: reads an address while the caller waits. Main thread.
#pragma once

#include "platform/Foundation/NSURLLoader.h"

namespace tarni::ios {

class URLLoader : public platform::NSURLLoader {
 public:
  platform::Task<std::optional<std::string>> stringWithContentsOfURL(std::string url) override;
};

}  // namespace tarni::ios
