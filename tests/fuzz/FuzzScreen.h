// FuzzScreen: an application in memory with a view of every kind, for inputs that act on it. Waits
// take no time, and delays pass between inputs. Main thread; one a process, never destroyed.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "agent/elements/UIViewMemoryCache.h"
#include "agent/elements/UIViewsManager.h"
#include "backends/headless/Build.h"
#include "backends/headless/Environment.h"
#include "backends/headless/History.h"
#include "backends/headless/views/Bars.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"
#include "backends/headless/views/SegmentedControl.h"
#include "backends/headless/views/Slider.h"
#include "backends/headless/views/Switch.h"
#include "backends/headless/views/TableView.h"
#include "backends/headless/views/TextField.h"
#include "backends/headless/views/TextView.h"
#include "backends/headless/views/WebView.h"
#include "platform/Platform.h"
#include "tests/fuzz/Lines.h"
#include "tests/fuzz/OneThread.h"
#include "tests/support/Complete.h"

namespace tarni::test {

class SilentLog : public platform::SystemLog {
 public:
  void write(std::string_view) noexcept override {}
};

class FuzzScreen {
 public:
  FuzzScreen() {
    environment_.useVirtualClock();
    // Small and plain: most of an input's time goes into pictures.
    environment_.screen().setSize({220, 480});
    environment_.screen().setScale(1);
    headless::historyCapacity = 10;
    environment_.install();
    platform::Platform parts = platform::current();
    parts.dispatch = &time_;
    parts.log = &log_;
    platform::install(parts);
    window_ = environment_.makeWindow();
    fill();
    UIViewsManager manager;
    manager.GetAllViews(window_, true);
  }

  const headless::WindowRef& window() const { return window_; }
  const std::vector<headless::ViewRef>& views() const { return views_; }

  // An input cannot know the identifiers that a search gives out: the views are "0", "1", …
  void nameViews() const {
    for (std::size_t index = 0; index < views_.size(); ++index) {
      UIViewMemoryCache::sharedInstance().addViewInMemoryCache(views_[index],
                                                               std::to_string(index));
    }
  }

  // Runs what the input left behind.
  void settle() {
    for (int round = 0; round < 2; ++round) {
      while (environment_.runLoop().pump() || time_.turn()) {
      }
      time_.pass(10);
    }
  }

 private:
  template <typename Kind, typename... Arguments>
  std::shared_ptr<Kind> add(Arguments&&... arguments) {
    const double top = 40.0 * static_cast<double>(views_.size());
    auto view = headless::build<Kind>(std::forward<Arguments>(arguments)...)
                    .frame({{10, top}, {200, 36}})
                    .in(*window_);
    views_.push_back(view);
    return view;
  }

  void fill() {
    add<headless::Button>("Log in");
    add<headless::Label>("Welcome");
    add<headless::TextField>("User name");
    add<headless::Switch>();
    add<headless::TextView>();
    add<headless::Slider>();
    add<headless::SegmentedControl>(std::vector<std::optional<std::string>>{"one", "two"});
    add<headless::TableView>()->setRows({"Row 1", "Row 2", "Row 3"});
    add<headless::NavigationBar>("Title");
    add<headless::View>()->setClassName("FakeSwitch");
    add<headless::WebView>()->setEngine([](const std::string& script) -> std::string {
      return script.starts_with("find") ? R"([{"elementID":"page"}])" : "";
    });
  }

  headless::Environment& environment_ = *new headless::Environment;
  OneThread time_{environment_.runLoop()};
  SilentLog log_;
  headless::WindowRef window_;
  std::vector<headless::ViewRef> views_;
};

}  // namespace tarni::test
