#include "backends/qt/views/QtDrawnButtons.h"

#include <algorithm>

#include "backends/qt/program/QtText.h"
#include "platform/UIKit/Classes.h"

namespace tarni::qt {

// ----------------------------------------------------------------------------------- QtDrawnButton

QtDrawnButton::QtDrawnButton(std::weak_ptr<const QtView> owner, const QtButtonSource& source,
                             platform::Class buttonClass, QtButtonSource::Key key)
    : QtPart(std::move(owner), buttonClass),
      source_(source),
      key_(key),
      object_(source.objectOf(key)),
      hasObject_(object_ != nullptr) {}

QRect QtDrawnButton::shape() const {
  const QWidget* const drawing = widget();
  return drawing ? source_.rectOf(key_) & drawing->rect() : QRect();
}

bool QtDrawnButton::isHidden() const {
  const QWidget* const drawing = widget();
  return !drawing || (drawing->isVisible() && shape().isEmpty());
}

bool QtDrawnButton::isUserInteractionEnabled() const {
  const QWidget* const drawing = widget();
  return drawing && drawing->isEnabled() && source_.isEnabled(key_);
}

std::optional<std::string> QtDrawnButton::currentTitle() const {
  return widget() ? nonEmpty(source_.titleOf(key_)) : std::nullopt;
}

std::optional<std::string> QtDrawnButton::accessibilityIdentifier() const {
  return widget() ? source_.identifierOf(key_) : std::nullopt;
}

std::optional<bool> QtDrawnButton::isSelected() const {
  return widget() ? source_.isButtonSelected(key_) : std::nullopt;
}

std::optional<bool> QtDrawnButton::isChecked() const {
  return widget() ? source_.isButtonChecked(key_) : std::nullopt;
}

std::optional<std::string> QtDrawnButton::accessibilityValue() const {
  return widget() ? source_.valueOf(key_) : std::nullopt;
}

platform::Task<void> QtDrawnButton::sendActionsForControlEvents(std::uint32_t) {
  co_return;
}

bool QtDrawnButton::exists() const {
  const std::shared_ptr<const QtView> view = owner();
  return view && view->widget() && isFor(key_) && source_.has(key_);
}

// ---------------------------------------------------------------------------------- QtDrawnButtons

const QtDrawnButtons::Views& QtDrawnButtons::renew(const std::shared_ptr<const QtView>& owner,
                                                   const QtButtonSource& source) {
  keys_.clear();
  source.collectKeys(keys_);
  const auto fits = [](QtButtonSource::Key key, const auto& button) { return button->isFor(key); };
  if (std::ranges::equal(keys_, buttons_, fits)) return buttons_;
  const platform::Class kind =
      platform::defineClass(source.buttonClass(), platform::uikit::UIButton);
  Views renewed;
  renewed.reserve(keys_.size());
  for (const QtButtonSource::Key key : keys_) {
    std::shared_ptr<QtDrawnButton> button = buttonOf(key);
    if (!button) button = std::make_shared<QtDrawnButton>(owner, source, kind, key);
    renewed.push_back(std::move(button));
  }
  buttons_ = std::move(renewed);
  return buttons_;
}

std::shared_ptr<QtDrawnButton> QtDrawnButtons::buttonOf(QtButtonSource::Key key) const {
  const auto found =
      std::ranges::find_if(buttons_, [&](const auto& button) { return button->isFor(key); });
  return found == buttons_.end() ? nullptr : *found;
}

}  // namespace tarni::qt
