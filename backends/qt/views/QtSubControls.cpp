#include "backends/qt/views/QtSubControls.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QDateTimeEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QStyleOptionComplex>
#include <QtWidgets/QToolButton>

namespace tarni::qt {
namespace {

// A slider's parts are called as those of a scroll bar that do the same.
constexpr QStyle::SubControl kBack = QStyle::SC_ScrollBarSubPage;
constexpr QStyle::SubControl kForward = QStyle::SC_ScrollBarAddPage;
constexpr QStyle::SubControl kHandle = QStyle::SC_ScrollBarSlider;

constexpr QtSubControl kSteps[] = {{QStyle::SC_SpinBoxUp, "Increase"},
                                   {QStyle::SC_SpinBoxDown, "Decrease"}};
constexpr QtSubControl kOpener[] = {{QStyle::SC_ComboBoxArrow, "Open"}};
constexpr QtSubControl kMenuArrow[] = {{QStyle::SC_ToolButtonMenu, "Show menu"}};
constexpr QtSubControl kSlider[] = {
    {kHandle, "Handle"}, {kBack, "Decrease"}, {kForward, "Increase"}};
constexpr QtSubControl kVerticalBar[] = {{kHandle, "Handle"},
                                         {QStyle::SC_ScrollBarSubLine, "Line up"},
                                         {kBack, "Page up"},
                                         {kForward, "Page down"},
                                         {QStyle::SC_ScrollBarAddLine, "Line down"}};
constexpr QtSubControl kHorizontalBar[] = {{kHandle, "Handle"},
                                           {QStyle::SC_ScrollBarSubLine, "Line left"},
                                           {kBack, "Page left"},
                                           {kForward, "Page right"},
                                           {QStyle::SC_ScrollBarAddLine, "Line right"}};

// Widgets tell their styles alone how they are to be drawn.
template <typename Widget>
struct Drawn : Widget {
  template <typename Option>
  static Option option(const QWidget& widget) {
    Option option;
    (static_cast<const Widget&>(widget).*&Drawn::initStyleOption)(&option);
    return option;
  }
};

QRect placeIn(const QWidget& widget, QStyle::ComplexControl control,
              const QStyleOptionComplex& option, QStyle::SubControl part) {
  return widget.style()->subControlRect(control, &option, part, &widget);
}

QStyleOptionSpinBox spinBoxOption(const QWidget& widget) {
  return Drawn<QAbstractSpinBox>::option<QStyleOptionSpinBox>(widget);
}

bool hasCalendar(const QWidget& widget) {
  const auto* const date = qobject_cast<const QDateTimeEdit*>(&widget);
  return date && date->calendarPopup();
}

// As a date field with a calendar asks where its arrow is.
QStyleOptionComboBox dateOption(const QWidget& widget) {
  QStyleOptionComboBox option;
  option.initFrom(&widget);
  option.editable = true;
  option.subControls = QStyle::SC_All;
  return option;
}

// The part of the groove on one side of the handle.
QRect beside(const QRect& handle, QRect groove, Qt::Orientation orientation, bool isAtStart) {
  if (orientation == Qt::Horizontal) {
    if (isAtStart) groove.setRight(handle.left() - 1);
    if (!isAtStart) groove.setLeft(handle.right() + 1);
  } else {
    if (isAtStart) groove.setBottom(handle.top() - 1);
    if (!isAtStart) groove.setTop(handle.bottom() + 1);
  }
  return groove;
}

}  // namespace

bool QtSpinBox::isEnabled(Key key) const {
  if (hasCalendar(*widget())) return true;
  const QAbstractSpinBox::StepEnabled enabled = spinBoxOption(*widget()).stepEnabled;
  return enabled.testFlag(key == QStyle::SC_SpinBoxUp ? QAbstractSpinBox::StepUpEnabled
                                                      : QAbstractSpinBox::StepDownEnabled);
}

std::span<const QtSubControl> QtSpinBox::subControls() const {
  if (hasCalendar(*widget())) return kOpener;
  const auto symbols = static_cast<const QAbstractSpinBox*>(widget())->buttonSymbols();
  if (symbols == QAbstractSpinBox::NoButtons) return {};
  return kSteps;
}

QRect QtSpinBox::placeOf(QStyle::SubControl part) const {
  const QWidget& box = *widget();
  return hasCalendar(box) ? placeIn(box, QStyle::CC_ComboBox, dateOption(box), part)
                          : placeIn(box, QStyle::CC_SpinBox, spinBoxOption(box), part);
}

std::span<const QtSubControl> QtComboBox::subControls() const {
  if (!static_cast<const QComboBox*>(widget())->isEditable()) return {};
  return kOpener;
}

QRect QtComboBox::placeOf(QStyle::SubControl part) const {
  const QWidget& box = *widget();
  return placeIn(box, QStyle::CC_ComboBox, Drawn<QComboBox>::option<QStyleOptionComboBox>(box),
                 part);
}

std::span<const QtSubControl> QtToolButton::subControls() const {
  const auto* const button = static_cast<const QToolButton*>(widget());
  if (button->popupMode() != QToolButton::MenuButtonPopup) return {};
  return kMenuArrow;
}

QRect QtToolButton::placeOf(QStyle::SubControl part) const {
  const QWidget& button = *widget();
  const auto option = Drawn<QToolButton>::option<QStyleOptionToolButton>(button);
  if (!option.features.testFlag(QStyleOptionToolButton::Menu)) return {};
  return placeIn(button, QStyle::CC_ToolButton, option, part);
}

std::span<const QtSubControl> QtSlider::subControls() const {
  const int jumps = widget()->style()->styleHint(QStyle::SH_Slider_AbsoluteSetButtons);
  const std::span<const QtSubControl> all = kSlider;
  // Where the handle jumps to the finger, no part of the groove stands for a step.
  return jumps & Qt::LeftButton ? all.first(1) : all;
}

QRect QtSlider::placeOf(QStyle::SubControl part) const {
  const QWidget& slider = *widget();
  const auto option = Drawn<QSlider>::option<QStyleOptionSlider>(slider);
  const QRect handle = placeIn(slider, QStyle::CC_Slider, option, QStyle::SC_SliderHandle);
  if (part == kHandle) return handle;
  const QRect groove = placeIn(slider, QStyle::CC_Slider, option, QStyle::SC_SliderGroove);
  return beside(handle, groove, option.orientation, (part == kBack) != option.upsideDown);
}

std::span<const QtSubControl> QtScrollBar::subControls() const {
  const auto* const bar = static_cast<const QAbstractSlider*>(widget());
  if (bar->orientation() == Qt::Vertical) return kVerticalBar;
  return kHorizontalBar;
}

QRect QtScrollBar::placeOf(QStyle::SubControl part) const {
  const QWidget& bar = *widget();
  return placeIn(bar, QStyle::CC_ScrollBar, Drawn<::QScrollBar>::option<QStyleOptionSlider>(bar),
                 part);
}

}  // namespace tarni::qt
