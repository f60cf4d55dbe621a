#include "tests/ios/OnIos.h"

#include "agent/TcpCommunication/PlaybackExecutor.h"
#include "backends/ios/IosPlatform.h"
#include "tests/ios/Await.h"

namespace tarni::test {
namespace {

// Threads of the agent write to it until the process ends.
LineLog& installedLog() {
  auto& log = *new LineLog;
  platform::Platform platform = ios::iosPlatform();
  platform.log = &log;
  platform::install(platform);
  return log;
}

UIApplication* anApplication() { return UIApplicationMake(@"UIApplication"); }

}  // namespace

OnIos::OnIos()
    : log_(installedLog()),
      application_(anApplication()),
      window_([[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]]) {
  [window_ makeKeyAndVisible];
  TakeRecord();
}

OnIos::~OnIos() {
  EndFaults();
  [pool_ release];
}

UIView* OnIos::addView(Class kind, CGRect frame) {
  UIView* const view = [[kind alloc] initWithFrame:frame];
  [window_ addSubview:view];
  [view release];
  return view;
}

void OnIos::run(platform::Task<void> task) { await(std::move(task)); }

std::string OnIos::answer(const std::string& command) {
  return await(PlaybackExecutor::execute(command)).value_or("(none)");
}

std::string OnIos::record(const std::vector<std::string>& starts) {
  std::string text;
  for (NSString* line in TakeRecord()) {
    const std::string utf8 = [line UTF8String];
    const auto isStart = [&utf8](const std::string& start) { return utf8.starts_with(start); };
    if (std::ranges::any_of(starts, isStart)) text += utf8 + "\n";
  }
  return text;
}

}  // namespace tarni::test
