// The views of widgets that draw a row of buttons by themselves: tab bars, menus and menu bars, the
// headers of tables. Each button is a subview of the kind UIButton. GUI thread.
#pragma once

#include <QtCore/QPointer>

#include "backends/qt/QtPart.h"

QT_BEGIN_NAMESPACE
class QAction;
class QHeaderView;
QT_END_NAMESPACE

namespace tarni::qt {

class QtBarButton;

class QtBar : public QtView {
 public:
  // What stands for one button for as long as it is there: an action's address, an index.
  using Key = quintptr;

  using QtView::QtView;

  // Only asked while the widget is there. What follows `has` is asked only when that is true.
  virtual bool has(Key key) const = 0;
  virtual QRect rectOf(Key key) const = 0;
  virtual QString titleOf(Key key) const = 0;
  virtual bool isEnabled(Key key) const = 0;
  virtual std::optional<std::string> identifierOf(Key) const { return std::nullopt; }
  virtual std::optional<std::string> valueOf(Key) const { return std::nullopt; }

 protected:
  virtual void collectKeys(std::vector<Key>& keys) const = 0;
  virtual std::optional<Key> keyAt(const QPoint& point) const = 0;
  virtual const char* buttonClass() const = 0;
  // The object whose end is the button's end; null when there is none.
  virtual QObject* objectOf(Key) const { return nullptr; }

  void appendParts(std::vector<platform::UIViewRef>& views) const final;
  platform::UIViewRef partAt(const QPoint& point) const final;

 private:
  void renew() const;
  std::shared_ptr<QtBarButton> buttonOf(Key key) const;

  mutable std::vector<Key> keys_;
  mutable std::vector<std::shared_ptr<QtBarButton>> buttons_;
};

class QtBarButton final : public QtPart, public platform::UIControl, public platform::UIButton {
 public:
  QtBarButton(std::weak_ptr<const QtView> bar, platform::Class buttonClass, QtBar::Key key,
              QObject* object);

  // False for a button whose object has gone, even when another has taken its address.
  bool isFor(QtBar::Key key) const { return key == key_ && (!hasObject_ || object_); }

  QRect shape() const override;
  // Also while its bar has no room for it: a menu bar folds what does not fit into a menu.
  bool isHidden() const override;
  bool isUserInteractionEnabled() const override;
  std::optional<std::string> currentTitle() const override;
  std::optional<std::string> accessibilityIdentifier() const override;
  std::optional<std::string> accessibilityValue() const override;
  std::optional<std::string> accessibilityLabel() const override { return currentTitle(); }
  std::optional<std::string> accessibilityHint() const override { return std::nullopt; }
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;

 protected:
  bool exists() const override;

 private:
  // Null when the button is no longer there.
  std::shared_ptr<const QtBar> bar() const;

  const QtBar::Key key_;
  const bool hasObject_;
  const QPointer<QObject> object_;
};

// The tabs by their position.
class QtTabs final : public QtBar {
 public:
  using QtBar::QtBar;
  bool has(Key key) const override;
  QRect rectOf(Key key) const override;
  QString titleOf(Key key) const override;
  bool isEnabled(Key key) const override;

 protected:
  void collectKeys(std::vector<Key>& keys) const override;
  std::optional<Key> keyAt(const QPoint& point) const override;
  const char* buttonClass() const override { return names::tabBarButton; }
};

// The entries of a menu or menu bar, without separators and without those that are widgets.
class QtActions final : public QtBar {
 public:
  using QtBar::QtBar;
  bool has(Key key) const override;
  QRect rectOf(Key key) const override;
  QString titleOf(Key key) const override;
  bool isEnabled(Key key) const override;
  std::optional<std::string> identifierOf(Key key) const override;
  std::optional<std::string> valueOf(Key key) const override;

 protected:
  void collectKeys(std::vector<Key>& keys) const override;
  std::optional<Key> keyAt(const QPoint& point) const override;
  const char* buttonClass() const override { return names::actionButton; }
  QObject* objectOf(Key key) const override;
};

// The visible sections of a table's header by their logical index.
class QtHeader final : public QtBar {
 public:
  using QtBar::QtBar;
  bool has(Key key) const override;
  QRect rectOf(Key key) const override;
  QString titleOf(Key key) const override;
  bool isEnabled(Key key) const override;

 protected:
  const QWidget* transparentChild() const override;
  void collectKeys(std::vector<Key>& keys) const override;
  std::optional<Key> keyAt(const QPoint& point) const override;
  const char* buttonClass() const override { return names::headerButton; }

 private:
  QHeaderView& header() const;
};

}  // namespace tarni::qt
