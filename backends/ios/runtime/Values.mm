#include "backends/ios/runtime/Values.h"

#include "backends/ios/guard/Guard.h"
#include "backends/ios/runtime/RuntimeClass.h"

namespace tarni::ios {

NSString* toNSString(std::string_view text) {
  NSString* string = [[NSString alloc] initWithBytes:text.data()
                                              length:text.size()
                                            encoding:NSUTF8StringEncoding];
  if (!string) {
    string = [[NSString alloc] initWithBytes:text.data()
                                      length:text.size()
                                    encoding:NSISOLatin1StringEncoding];
  }
  return [string autorelease];
}

std::optional<std::string> toText(id string) {
  if (!isKindOf(string, [NSString class])) return std::nullopt;
  NSData* const bytes = answered(string, "dataUsingEncoding:allowLossyConversion:", [&] {
    return [string dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  });
  return std::string(static_cast<const char*>([bytes bytes]), [bytes length]);
}

std::string toTextOrEmpty(id string) { return toText(string).value_or(""); }

}  // namespace tarni::ios
