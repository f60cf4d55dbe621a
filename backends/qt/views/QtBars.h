// The views of widgets that draw a row of buttons by themselves: tab bars, menus and menu bars. GUI
// thread.
#pragma once

#include "backends/qt/views/QtDrawnButtons.h"
#include "backends/qt/views/QtValues.h"

QT_BEGIN_NAMESPACE
class QAction;
QT_END_NAMESPACE

namespace tarni::qt {

using QtBar = QtWithButtons<QtView>;

// The tabs. A tab is known by the page that it opens, and in a bar without pages by what the bar
// keeps of it, so that it stays itself when others before it close or it is moved.
class QtTabs final : public QtWithValue<QtBar> {
 public:
  using QtWithValue::QtWithValue;
  bool has(Key key) const override;
  QRect rectOf(Key key) const override;
  QString titleOf(Key key) const override;
  bool isEnabled(Key key) const override;
  std::optional<bool> isButtonSelected(Key key) const override;

 protected:
  void collectKeys(std::vector<Key>& keys) const override;
  std::optional<Key> keyAt(const QPoint& point) const override;
  const char* buttonClass() const override { return names::kTabBarButton; }
  QObject* objectOf(Key key) const override;

 private:
  Key keyAt(int index) const;
  // Negative for a tab that has gone.
  int indexOf(Key key) const;
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
  std::optional<bool> isButtonChecked(Key key) const override;

 protected:
  void collectKeys(std::vector<Key>& keys) const override;
  std::optional<Key> keyAt(const QPoint& point) const override;
  const char* buttonClass() const override { return names::kActionButton; }
  QObject* objectOf(Key key) const override;
};

}  // namespace tarni::qt
