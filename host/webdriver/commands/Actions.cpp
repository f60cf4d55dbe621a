#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/webdriver/ActionSequence.h"
#include "host/webdriver/InputScript.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

using Kind = ActionItem::Kind;

// What takes time within its tick; the others are done before it.
bool takesTime(const ActionItem& item) {
  return item.kind == Kind::PointerMove && item.duration.count() > 0;
}

void put(const ActionItem& item, InputScript& script) {
  switch (item.kind) {
    case Kind::Pause:
      break;
    case Kind::KeyDown:
    case Kind::KeyUp:
      script.key(item.key, item.kind == Kind::KeyDown);
      break;
    case Kind::PointerDown:
    case Kind::PointerUp:
      script.button(item.button, item.kind == Kind::PointerDown);
      break;
    case Kind::PointerMove:
      script.moveTo(script.pointAt(item.x, item.y, item.origin), item.duration);
      break;
    case Kind::Scroll:
      script.wheel(script.pointAt(item.x, item.y, item.origin), item.right, item.down);
      break;
  }
}

// All that sources do in one tick, which lasts as long as the longest of it.
void putTick(const std::vector<const ActionItem*>& tick, InputScript& script) {
  std::chrono::milliseconds lasts{0};
  std::chrono::milliseconds taken{0};
  for (const auto* const item : tick) {
    lasts = std::max(lasts, item->duration);
    if (!takesTime(*item)) put(*item, script);
  }
  for (const auto* const item : tick) {
    if (!takesTime(*item)) continue;
    put(*item, script);
    taken += item->duration;
  }
  script.pause(std::max(lasts - taken, std::chrono::milliseconds(0)));
}

}  // namespace

Json performActions(Session& session, const Arguments& arguments) {
  const auto sources = readActions(arguments.body.value("actions", Json(nullptr)));
  std::size_t ticks = 0;
  for (const auto& source : sources) ticks = std::max(ticks, source.items.size());
  InputScript script(session);
  for (std::size_t tick = 0; tick < ticks; ++tick) {
    std::vector<const ActionItem*> items;
    for (const auto& source : sources) {
      if (tick < source.items.size()) items.push_back(&source.items[tick]);
    }
    putTick(items, script);
  }
  script.play();
  return nullptr;
}

Json releaseActions(Session& session, const Arguments&) {
  releaseInput(session);
  return nullptr;
}

}  // namespace tarni::host::webdriver
