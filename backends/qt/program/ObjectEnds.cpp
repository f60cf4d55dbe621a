#include "backends/qt/program/ObjectEnds.h"

#include <private/qhooks_p.h>

#include <bit>
#include <thread>
#include <vector>

namespace tarni::qt {
namespace {

struct Ends {
  const std::thread::id thread = std::this_thread::get_id();
  // Of whoever had the hook before.
  const QHooks::RemoveQObjectCallback before =
      std::bit_cast<QHooks::RemoveQObjectCallback>(qtHookData[QHooks::RemoveQObject]);
  std::vector<void (*)(const QObject*)> listeners;
};

// Never destroyed: objects end until the process has gone.
Ends& ends();

void objectEnds(QObject* object) {
  if (ends().before) ends().before(object);
  if (std::this_thread::get_id() != ends().thread) return;
  for (const auto& forget : ends().listeners) forget(object);
}

Ends& ends() {
  static auto* const shared = new Ends;
  return *shared;
}

}  // namespace

void whenObjectsEnd(void (*forget)(const QObject* gone)) {
  ends().listeners.push_back(forget);
  qtHookData[QHooks::RemoveQObject] = std::bit_cast<quintptr>(&objectEnds);
}

}  // namespace tarni::qt
