// The values of combo boxes, spin boxes, date fields, sliders and tab bars. GUI thread.
#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include "backends/qt/program/InputQueue.h"
#include "backends/qt/program/QtText.h"
#include "platform/UIKit/UIItems.h"

namespace tarni::qt {

// Of a widget of one of these kinds, as it shows it.
QString valueOf(const QWidget& widget);
// As a person chooses or types it, with the signals of that. Throws NSException that says what can
// be chosen.
void chooseValueOf(QWidget& widget, const QString& value);

// A view of the kind `Base` whose widget has a value.
template <typename Base>
class QtWithValue : public Base, public platform::UIValueControl {
 public:
  using Base::Base;

  std::string currentValue() const final {
    const QWidget* const control = this->widget();
    return control ? utf8(valueOf(*control)) : std::string();
  }
  platform::Task<void> chooseValue(std::string value) final {
    return performAsInput(
        [control = QPointer<QWidget>(this->widget()), value = QString::fromStdString(value)] {
          if (control) chooseValueOf(*control, value);
        });
  }
};

}  // namespace tarni::qt
