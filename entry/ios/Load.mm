// Starts the agent when the runtime loads its classes, before the application's `main`.
#include <cstdlib>

#include "backends/ios/Apple.h"
#include "backends/ios/IosPlatform.h"
#include "entry/StartAgent.h"

// An application that is started on the device itself has no environment. Empty when it names no
// address.
static std::string scriptsOfApplication() {
  const id address = [[NSBundle mainBundle] objectForInfoDictionaryKey:@"TarniScripts"];
  const char* const text =
      [address isKindOfClass:[NSString class]] ? [address UTF8String] : nullptr;
  return text ? text : "";
}

// The same for the session channel, whose address is taken from the environment.
static void takeSessionOfApplication() {
  const id address = [[NSBundle mainBundle] objectForInfoDictionaryKey:@"TarniSession"];
  if ([address isKindOfClass:[NSString class]]) setenv("TARNI_SESSION", [address UTF8String], 0);
}

@interface TarniAgent : NSObject
@end

@implementation TarniAgent

+ (void)load {
  @autoreleasepool {
    takeSessionOfApplication();
    tarni::entry::startAgent(tarni::ios::iosPlatform(), scriptsOfApplication());
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(applicationWillTerminate:)
                                                 name:@"UIApplicationWillTerminateNotification"
                                               object:nil];
  }
}

+ (void)applicationWillTerminate:(NSNotification*)notification {
  (void)notification;
  tarni::entry::endAgent();
}

@end
