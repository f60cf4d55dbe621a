#include "backends/qt/quick/QuickAppearances.h"

#include <QtCore/QPointer>

#include "backends/qt/QtPlatform.h"
#include "backends/qt/input/QtEventHook.h"
#include "backends/qt/quick/QuickKind.h"
#include "backends/qt/quick/QuickRegistry.h"
#include "backends/qt/quick/QuickView.h"

namespace tarni::qt {
namespace {

// Connected by the names of the signals, since these classes are private to libraries that a
// program need not have.
class Pages : public QObject {
  Q_OBJECT

 public:
  explicit Pages(QQuickItem& stackView) : QObject(&stackView) {
    connect(&stackView, SIGNAL(busyChanged()), this, SLOT(turn()));
    connect(&stackView, SIGNAL(currentItemChanged()), this, SLOT(turn()));
  }

 private:
  Q_SLOT void turn() {
    eventDispatch().viewWillAppear();
    if (!parent()->property("busy").toBool()) eventDispatch().viewDidAppear();
  }
};

// One while the popup is open; ends with it.
class OpenPopup : public QObject {
  Q_OBJECT

 public:
  explicit OpenPopup(QObject& popup) : QObject(&popup) {
    connect(&popup, SIGNAL(opened()), this, SLOT(appear()));
    connect(&popup, SIGNAL(closed()), this, SLOT(end()));
    noteMenu(popup);
    eventDispatch().viewWillAppear();
    if (popup.property("opened").toBool()) appear();
  }
  ~OpenPopup() override { appear(); }

 private:
  static void noteMenu(const QObject& popup) {
    auto* const opener = popup.property("parent").value<QQuickItem*>();
    const bool isMenu =
        opener && popup.inherits("QQuickMenu") &&
        (opener->inherits("QQuickMenuItem") || opener->inherits("QQuickMenuBarItem"));
    if (isMenu) noteMenuOpened(viewOfItem(opener));
  }

  Q_SLOT void appear() {
    if (!std::exchange(hasAppeared_, true)) eventDispatch().viewDidAppear();
  }
  Q_SLOT void end() {
    appear();
    setParent(nullptr);  // the popup may open again before this one has gone
    deleteLater();
  }

  bool hasAppeared_ = false;
};

// An open popup stands in the overlay, which is made with the first of them.
class Overlays : public QObject {
 public:
  explicit Overlays(QQuickWindow& window) : QObject(&window), content_(window.contentItem()) {
    connect(content_, &QQuickItem::childrenChanged, this, [this] { findOverlay(); });
    findOverlay();
  }

 private:
  void findOverlay() {
    if (overlay_) return;
    for (QQuickItem* const child : content_->childItems()) {
      if (!child->inherits("QQuickOverlay")) continue;
      overlay_ = child;
      connect(child, &QQuickItem::childrenChanged, this, [this] { findPopups(); });
      return findPopups();
    }
  }

  void findPopups() {
    for (const QQuickItem* const child : overlay_->childItems()) {
      auto* const popup = const_cast<QObject*>(popupOfItem(*child));
      if (popup && !popup->findChild<OpenPopup*>(QString(), Qt::FindDirectChildrenOnly)) {
        new OpenPopup(*popup);
      }
    }
  }

  QQuickItem* const content_;
  QPointer<QQuickItem> overlay_;
};

}  // namespace

void watchPopups(QQuickWindow& window) {
  new Overlays(window);
}

void watchPages(QQuickItem& stackView) {
  new Pages(stackView);
}

}  // namespace tarni::qt

#include "QuickAppearances.moc"
