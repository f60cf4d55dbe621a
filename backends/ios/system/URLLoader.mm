#include "backends/ios/system/URLLoader.h"

#include "backends/ios/guard/Completed.h"
#include "backends/ios/guard/Guard.h"
#include "backends/ios/runtime/Values.h"

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
