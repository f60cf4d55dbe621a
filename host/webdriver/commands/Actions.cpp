#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/webdriver/ActionSequence.h"
#include "host/webdriver/InputScript.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

using Kind = ActionItem::Kind;

struct Source {
  const ActionSource* actions;
  std::string pointer;  // as InputScript calls it
};

bool isActive(const ActionSource& source) {
  return std::ranges::any_of(source.items,
                             [](const ActionItem& item) { return item.kind != Kind::Pause; });
}

// Several that act are fingers, where there is no mouse in any case. One alone is the mouse, even
// of a client that takes the program for one of a phone.
std::vector<Source> withPointers(const Session& session, const std::vector<ActionSource>& all) {
  const auto canBeFinger = [&session](const ActionSource& source) {
    return source.isPointer && isActive(source) && (source.isFinger || !session.hasInput());
  };
  const bool areFingers = std::ranges::count_if(all, canBeFinger) > 1;
  std::vector<Source> sources;
  for (const auto& source : all) {
    sources.push_back({&source, areFingers && canBeFinger(source) ? source.id : ""});
  }
  return sources;
}

// What takes time within its tick; the others are done before it.
bool takesTime(const ActionItem& item) {
  return item.kind == Kind::PointerMove && item.duration.count() > 0;
}

InputScript::Move moveOf(const ActionItem& item, const std::string& pointer, InputScript& script) {
  return {pointer, script.pointAt(pointer, item.x, item.y, item.origin), item.duration};
}

void put(const ActionItem& item, const std::string& pointer, InputScript& script) {
  switch (item.kind) {
    case Kind::Pause:
      break;
    case Kind::KeyDown:
    case Kind::KeyUp:
      script.key(item.key, item.kind == Kind::KeyDown);
      break;
    case Kind::PointerDown:
    case Kind::PointerUp:
      script.button(pointer, item.button, item.kind == Kind::PointerDown);
      break;
    case Kind::PointerMove:
      script.move({moveOf(item, pointer, script)});
      break;
    case Kind::Scroll:
      script.wheel(script.pointAt(pointer, item.x, item.y, item.origin), item.right, item.down);
      break;
  }
}

// All that sources do in one tick, which lasts as long as the longest of it.
void putTick(const std::vector<Source>& sources, std::size_t tick, InputScript& script) {
  std::chrono::milliseconds lasts{0};
  std::chrono::milliseconds taken{0};
  std::vector<InputScript::Move> moves;
  for (const auto& [source, pointer] : sources) {
    if (tick >= source->items.size()) continue;
    const auto& item = source->items[tick];
    lasts = std::max(lasts, item.duration);
    if (takesTime(item)) {
      moves.push_back(moveOf(item, pointer, script));
      taken = std::max(taken, item.duration);
    } else {
      put(item, pointer, script);
    }
  }
  if (!moves.empty()) script.move(moves);
  script.pause(lasts - taken);
}

}  // namespace

Json performActions(Session& session, const Arguments& arguments) {
  const auto all = readActions(arguments.body.value("actions", Json(nullptr)));
  const auto sources = withPointers(session, all);
  std::size_t ticks = 0;
  for (const auto& source : all) ticks = std::max(ticks, source.items.size());
  InputScript script(session);
  for (std::size_t tick = 0; tick < ticks; ++tick) putTick(sources, tick, script);
  script.play();
  return nullptr;
}

Json releaseActions(Session& session, const Arguments&) {
  releaseInput(session);
  return nullptr;
}

}  // namespace tarni::host::webdriver
