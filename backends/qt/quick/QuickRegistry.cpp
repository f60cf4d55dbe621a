#include "backends/qt/quick/QuickRegistry.h"

#include <unordered_map>

#include "backends/qt/program/ObjectEnds.h"
#include "backends/qt/quick/QuickAppearances.h"
#include "backends/qt/quick/QuickControls.h"
#include "backends/qt/quick/QuickWindowView.h"

namespace tarni::qt {
namespace {

struct Registry {
  std::unordered_map<const QObject*, KnownItem> items;
  std::unordered_map<const QObject*, std::shared_ptr<QuickWindowView>> windows;
};

void forget(const QObject* gone);

// Never destroyed: views are asked for until the process has gone.
Registry& registry() {
  static auto* const shared = [] {
    whenObjectsEnd(forget);
    return new Registry;
  }();
  return *shared;
}

void forget(const QObject* gone) {
  registry().items.erase(gone);
  registry().windows.erase(gone);
}

}  // namespace

KnownItem& knownItem(const QQuickItem& item) {
  const auto [place, isNew] = registry().items.try_emplace(&item);
  if (isNew) {
    // The kind asks the program's properties, which may bring other items here.
    const QuickKind kind = kindOfItem(item);
    if (item.inherits("QQuickStackView")) watchPages(const_cast<QQuickItem&>(item));
    KnownItem& known = registry().items[&item];
    known.kind = kind;
    return known;
  }
  return place->second;
}

std::shared_ptr<QuickView> viewOfItem(QQuickItem* item) {
  if (!item) return nullptr;
  const KnownItem& known = knownItem(*item);
  if (known.view) return known.view;
  const QuickKind kind = kindOfItem(*item);
  std::shared_ptr<QuickView> view = makeQuickView(*item, kind);
  KnownItem& renewed = knownItem(*item);
  renewed = {kind, KnownItem::Role::View, nullptr, view};
  return view;
}

QQuickItem* itemOfView(const platform::UIViewRef& view) {
  const auto* const ours = dynamic_cast<const QuickView*>(view.get());
  return ours ? ours->item() : nullptr;
}

platform::UIWindowRef viewOfQuickWindow(QQuickWindow& window) {
  std::shared_ptr<QuickWindowView>& known = registry().windows[&window];
  if (!known) {
    known = std::make_shared<QuickWindowView>(window);
    watchPopups(window);
  }
  return known;
}

}  // namespace tarni::qt
