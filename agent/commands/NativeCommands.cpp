#include "agent/commands/NativeCommands.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string_view>

#include "agent/elements/UIViewMemoryCache.h"

namespace tarni {

using nlohmann::ordered_json;

namespace {

struct Row {
  std::string_view name;
  commands::Entries (*handler)(FunctionCallObject);
};

constexpr std::array kRows{
    Row{"findelementsinsideelement", commands::findelementsinsideelement},
    Row{"findeditablecomponents", commands::findeditablecomponents},
    Row{"findelements", commands::findelements},
    Row{"clickelement", commands::clickelement},
    Row{"sendkeysonelement", commands::sendkeysonelement},
    Row{"swipeto", commands::swipeto},
    Row{"swipereset", commands::swipereset},
    Row{"swipeon", commands::swipeon},
    Row{"isselected", commands::isselected},
    Row{"isenabled", commands::isenabled},
    Row{"isdisplayed", commands::isdisplayed},
    Row{"gettext", commands::gettext},
    Row{"getheight", commands::getheight},
    Row{"getwidth", commands::getwidth},
    Row{"ai_findelements", commands::ai_findelements},
    Row{"ai_getscreensnapshot", commands::ai_getscreensnapshot},
    Row{"highlight", commands::highlight},
};

}  // namespace

platform::Task<ordered_json> UIViewFinder::parseFunctionCallObject(FunctionCallObject command) {
  const auto row = std::ranges::find(kRows, command.getFunctionName(), &Row::name);
  if (row == kRows.end()) co_return ordered_json::array();
  co_return co_await row->handler(std::move(command));
}

namespace commands {

platform::UIViewRef elementOf(const FunctionCallObject& command) {
  return UIViewMemoryCache::sharedInstance().getUIVIewAccordingToElementId(
      command.getAccessorValue());
}

ordered_json output(std::string value) {
  ordered_json entry;
  entry["output"] = std::move(value);
  return ordered_json::array({std::move(entry)});
}

ordered_json output(bool value) {
  return output(std::string(value ? "true" : "false"));
}

}  // namespace commands
}  // namespace tarni
