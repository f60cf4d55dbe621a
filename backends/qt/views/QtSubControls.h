// The views of widgets that a style draws in parts which do different things: spin boxes, combo
// boxes, date fields, sliders, scroll bars, tool buttons with a menu. Each such part is a button,
// where the style draws it; what is left of the widget is the view of the whole. GUI thread.
#pragma once

#include <QtWidgets/QStyle>
#include <span>

#include "backends/qt/views/QtControls.h"
#include "backends/qt/views/QtDrawnButtons.h"
#include "backends/qt/views/QtValues.h"

namespace tarni::qt {

struct QtSubControl {
  QStyle::SubControl part;
  const char* title;
};

template <typename Base>
class QtComplexControl : public QtWithButtons<Base> {
 public:
  using Key = QtButtonSource::Key;
  using QtWithButtons<Base>::QtWithButtons;

  bool has(Key key) const override { return find(key) != nullptr; }
  QRect rectOf(Key key) const override { return placeOf(find(key)->part); }
  QString titleOf(Key key) const override { return QString::fromLatin1(find(key)->title); }
  bool isEnabled(Key) const override { return true; }

  void collectKeys(std::vector<Key>& keys) const override {
    if (!this->widget()->isVisible()) return;
    for (const QtSubControl& known : subControls()) keys.push_back(known.part);
  }
  std::optional<Key> keyAt(const QPoint& point) const override {
    for (const QtSubControl& known : subControls()) {
      if (placeOf(known.part).contains(point)) return known.part;
    }
    return std::nullopt;
  }
  const char* buttonClass() const override { return "UIButton"; }

 protected:
  // Those that the widget has now. What lies above others comes first.
  virtual std::span<const QtSubControl> subControls() const = 0;
  // In the widget; empty for one that the style does not draw.
  virtual QRect placeOf(QStyle::SubControl part) const = 0;

 private:
  const QtSubControl* find(Key key) const {
    for (const QtSubControl& known : subControls()) {
      if (known.part == key) return &known;
    }
    return nullptr;
  }
};

// The arrows of a spin box or a date field; of a date field with a calendar, what opens that.
class QtSpinBox final : public QtWithValue<QtComplexControl<QtControl>> {
 public:
  using QtWithValue::QtWithValue;
  // False at the end of the range.
  bool isEnabled(Key key) const override;

 protected:
  std::span<const QtSubControl> subControls() const override;
  QRect placeOf(QStyle::SubControl part) const override;
};

// The arrow of a combo box with a text field. Any other one is opened wherever it is pressed.
class QtComboBox final : public QtWithValue<QtComplexControl<QtView>> {
 public:
  using QtWithValue::QtWithValue;

 protected:
  std::span<const QtSubControl> subControls() const override;
  QRect placeOf(QStyle::SubControl part) const override;
};

// The arrow of a tool button whose menu does not open with the button itself.
class QtToolButton final : public QtComplexControl<QtButton> {
 public:
  using QtComplexControl::QtComplexControl;

 protected:
  std::span<const QtSubControl> subControls() const override;
  QRect placeOf(QStyle::SubControl part) const override;
};

// The handle of a slider, and the groove on both sides of it, which steps by a page.
class QtSlider final : public QtWithValue<QtComplexControl<QtControl>> {
 public:
  using QtWithValue::QtWithValue;

 protected:
  std::span<const QtSubControl> subControls() const override;
  QRect placeOf(QStyle::SubControl part) const override;
};

class QtScrollBar final : public QtWithValue<QtComplexControl<QtControl>> {
 public:
  using QtWithValue::QtWithValue;

 protected:
  std::span<const QtSubControl> subControls() const override;
  QRect placeOf(QStyle::SubControl part) const override;
};

}  // namespace tarni::qt
