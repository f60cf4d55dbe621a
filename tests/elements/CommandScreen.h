// A screen whose elements the playback commands act on; delays pass when the test says so.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "agent/TcpCommunication/PlaybackExecutor.h"
#include "agent/core/state/GlobalVars.h"
#include "agent/elements/IdentityTag.h"
#include "agent/elements/UIViewMemoryCache.h"
#include "agent/elements/UIViewsManager.h"
#include "agent/elements/XpathManager.h"
#include "platform/Platform.h"
#include "platform/Task.h"
#include "tests/elements/ManualTime.h"
#include "tests/posix/Immortal.h"
#include "tests/support/Screen.h"

namespace tarni::test {

class CommandScreen : public Screen {
 protected:
  using Json = nlohmann::ordered_json;

  CommandScreen() {
    platform::Platform parts = platform::current();
    parts.dispatch = &time;
    platform::install(parts);
    UIViewMemoryCache::sharedInstance().clearMemoryCache();
    GlobalVars::sharedInstance().set_viewControllerLoaded("LOADED");
    GlobalVars::sharedInstance().set_editAbleElement(nullptr);
  }

  ~CommandScreen() override { environment.application().removeWindow(window); }

  // A visible view in the window.
  template <typename Kind, typename... Arguments>
  headless::Building<Kind> add(Arguments&&... arguments) {
    auto building = headless::build<Kind>(std::forward<Arguments>(arguments)...);
    building.frame({{10, 10}, {100, 40}});
    building.in(*window);
    return building;
  }

  // Below `parent`, `depth` views, each in the one before; the deepest.
  static headless::ViewRef nest(headless::View& parent, int depth) {
    headless::View* above = &parent;
    headless::ViewRef view;
    for (int level = 0; level < depth; ++level) {
      view = headless::build<headless::View>().frame({{0, 0}, {100, 100}}).in(*above);
      above = view.get();
    }
    return view;
  }

  static std::string answer(const std::string& message) {
    return complete(PlaybackExecutor::execute(message)).value_or("(no answer)");
  }
  static Json command(const Json& fields) { return Json::parse(answer(fields.dump())); }
  // The command on an element that was put into the cache for it.
  static Json commandOn(const platform::UIViewRef& view, Json fields) {
    UIViewMemoryCache::sharedInstance().addViewInMemoryCache(view, "the element");
    fields["accessorvalue"] = "the element";
    return command(fields);
  }

  // The views behind the identifiers of an answer.
  static std::vector<platform::UIViewRef> viewsOf(const Json& entries) {
    std::vector<platform::UIViewRef> views;
    for (const Json& entry : entries) {
      views.push_back(UIViewMemoryCache::sharedInstance().getUIVIewAccordingToElementId(
          entry.at("elementID").get<std::string>()));
    }
    return views;
  }

  static std::optional<platform::Guid> tagOf(const platform::UIViewRef& view,
                                             const platform::TagKey& key) {
    const platform::Guid tag = view->layer().tag(key);
    return tag ? std::optional(tag) : std::nullopt;
  }
  static std::optional<std::string> xpathOf(const platform::UIViewRef& view) {
    return XpathManager::sharedInstance().getPositionXpathOfUIView(view);
  }

  // Runs what waits for the main queue.
  void drainMainQueue() {
    while (environment.runLoop().pump()) {
    }
  }

  ManualTime& time = immortal<ManualTime>(environment.runLoop());
};

}  // namespace tarni::test
