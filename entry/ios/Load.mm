// Starts the agent when the runtime loads its classes, before the application's `main`.
#include "backends/ios/Apple.h"
#include "backends/ios/IosPlatform.h"
#include "entry/StartAgent.h"

@interface TarniAgent : NSObject
@end

@implementation TarniAgent

+ (void)load {
  @autoreleasepool {
    tarni::entry::startAgent(tarni::ios::iosPlatform());
    [[NSNotificationCenter defaultCenter]
        addObserver:self
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
