#include "backends/ios/URLLoader.h"

#include "backends/ios/Completed.h"
#include "backends/ios/Guard.h"
#include "backends/ios/Values.h"

namespace tarni::ios {

platform::Task<std::optional<std::string>> URLLoader::stringWithContentsOfURL(std::string url) {
  return completed([url = std::move(url)] {
    return toText(guarded([&]() -> NSString* {
      NSURL* const address = [NSURL URLWithString:toNSString(url)];
      if (!address) return nil;
      return [NSString stringWithContentsOfURL:address encoding:NSUTF8StringEncoding error:NULL];
    }));
  });
}

}  // namespace tarni::ios
