// QtURLLoader: reads texts from addresses (file, http, https) with the toolkit's own network
// library, which comes with the web engine. The program goes on meanwhile. Main thread.
#pragma once

#include "platform/Foundation/NSURLLoader.h"

namespace tarni::qt {

class QtURLLoader : public platform::NSURLLoader {
 public:
  platform::Task<std::optional<std::string>> stringWithContentsOfURL(std::string url) override;
};

}  // namespace tarni::qt
