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
// All that it chooses from; nothing where that is a number, or any text.
QStringList allChoicesOf(const QWidget& widget);
// Of what is chosen among these; -1 for none.
int chosenPlaceOf(const QWidget& widget);
void choosePlaceOf(QWidget& widget, int place);

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
  std::vector<std::string> choices() const final {
    std::vector<std::string> texts;
    const QWidget* const control = this->widget();
    for (const QString& text : control ? allChoicesOf(*control) : QStringList()) {
      texts.push_back(utf8(text));
    }
    return texts;
  }
  std::optional<std::size_t> chosenPlace() const final {
    const QWidget* const control = this->widget();
    const int place = control ? chosenPlaceOf(*control) : -1;
    return place < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(place));
  }
  platform::Task<void> choosePlace(std::size_t place) final {
    return performAsInput([control = QPointer<QWidget>(this->widget()), place] {
      if (control) choosePlaceOf(*control, static_cast<int>(place));
    });
  }
};

}  // namespace tarni::qt
