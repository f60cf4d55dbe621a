// Buttons that a widget draws itself and people take for things of their own: tabs, menu entries,
// the arrows of a spin box. Each is a subview of the widget's view, of the kind UIButton. GUI
// thread.
#pragma once

#include <QtCore/QPointer>

#include "backends/qt/views/QtPart.h"

namespace tarni::qt {

// What a view knows of the buttons that its widget draws.
class QtButtonSource {
 public:
  // What stands for one button for as long as it is there: an action's address, an index.
  using Key = quintptr;

  virtual ~QtButtonSource() = default;

  // Only asked while the widget is there. What follows `has` is asked only when that is true.
  virtual bool has(Key key) const = 0;
  virtual QRect rectOf(Key key) const = 0;
  virtual QString titleOf(Key key) const = 0;
  virtual bool isEnabled(Key key) const = 0;
  virtual std::optional<std::string> identifierOf(Key) const { return std::nullopt; }
  virtual std::optional<std::string> valueOf(Key) const { return std::nullopt; }
  virtual std::optional<bool> isButtonSelected(Key) const { return std::nullopt; }
  virtual std::optional<bool> isButtonChecked(Key) const { return std::nullopt; }

  virtual void collectKeys(std::vector<Key>& keys) const = 0;
  // The button at that point of the widget; null where there is none.
  virtual std::optional<Key> keyAt(const QPoint& point) const = 0;
  virtual const char* buttonClass() const = 0;
  // The object whose end is the button's end; null when there is none.
  virtual QObject* objectOf(Key) const { return nullptr; }
};

class QtDrawnButton final : public QtPart, public platform::UIControl, public platform::UIButton {
 public:
  // `owner` is `source`.
  QtDrawnButton(std::weak_ptr<const QtView> owner, const QtButtonSource& source,
                platform::Class buttonClass, QtButtonSource::Key key);

  // False for a button whose object has gone, even when another has taken its address.
  bool isFor(QtButtonSource::Key key) const { return key == key_ && (!hasObject_ || object_); }

  QRect shape() const override;
  // Also while its widget has no room for it: a menu bar folds what does not fit into a menu.
  bool isHidden() const override;
  bool isUserInteractionEnabled() const override;
  std::optional<bool> isSelected() const override;
  std::optional<bool> isChecked() const override;
  std::optional<std::string> currentTitle() const override;
  std::optional<std::string> accessibilityIdentifier() const override;
  std::optional<std::string> accessibilityValue() const override;
  std::optional<std::string> accessibilityLabel() const override { return currentTitle(); }
  std::optional<std::string> accessibilityHint() const override { return std::nullopt; }
  platform::Task<void> sendActionsForControlEvents(std::uint32_t events) override;

 protected:
  bool exists() const override;

 private:
  const QtButtonSource& source_;  // while the owner is there
  const QtButtonSource::Key key_;
  const QPointer<QObject> object_;
  const bool hasObject_;
};

// The views of one widget's buttons. A button stays the same view as long as it is there.
class QtDrawnButtons {
 public:
  using Views = std::vector<std::shared_ptr<QtDrawnButton>>;

  // As they are now. `owner` is `source`.
  const Views& renew(const std::shared_ptr<const QtView>& owner, const QtButtonSource& source);

 private:
  std::shared_ptr<QtDrawnButton> buttonOf(QtButtonSource::Key key) const;

  std::vector<QtButtonSource::Key> keys_;
  Views buttons_;
};

// A view of the kind `Base` whose widget draws buttons.
template <typename Base>
class QtWithButtons : public Base, public QtButtonSource {
 public:
  using Base::Base;

 protected:
  void appendParts(std::vector<platform::UIViewRef>& views) const final {
    const QtDrawnButtons::Views& buttons = renewed();
    views.insert(views.end(), buttons.begin(), buttons.end());
  }
  platform::UIViewRef partAt(const QPoint& point) const final {
    const std::optional<Key> key = keyAt(point);
    if (!key) return nullptr;
    for (const auto& button : renewed()) {
      if (button->isFor(*key)) return button;
    }
    return nullptr;
  }

 private:
  const QtDrawnButtons::Views& renewed() const {
    return buttons_.renew(std::static_pointer_cast<const QtView>(this->shared_from_this()), *this);
  }

  mutable QtDrawnButtons buttons_;
};

}  // namespace tarni::qt
