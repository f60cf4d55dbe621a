#include "backends/qt/program/OwnWidgets.h"

#include <QtWidgets/QWidget>
#include <unordered_set>

namespace tarni::qt {
namespace {

// Never destroyed: widgets are asked about until the process has gone.
std::unordered_set<const QObject*>& ownWidgets() {
  static auto* const shared = new std::unordered_set<const QObject*>;
  return *shared;
}

}  // namespace

void hideFromWalks(QWidget* widget) {
  if (!widget || !ownWidgets().insert(widget).second) return;
  QObject::connect(widget, &QObject::destroyed, [](QObject* gone) { ownWidgets().erase(gone); });
}

bool isHiddenFromWalks(const QWidget* widget) {
  const auto& own = ownWidgets();
  return !own.empty() && own.contains(widget);
}

}  // namespace tarni::qt
