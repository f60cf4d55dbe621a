#include "backends/headless/views/Dialog.h"

#include "backends/headless/RunLoop.h"
#include "backends/headless/drawing/TextStyle.h"
#include "backends/headless/views/Button.h"
#include "backends/headless/views/Label.h"

namespace tarni::headless {
namespace {

constexpr double kWidth = 270;         // points
constexpr double kMessageHeight = 80;  // points
constexpr double kButtonHeight = 44;   // points

}  // namespace

Dialog::Dialog(std::string message, std::vector<std::string> buttons)
    : box_(std::make_shared<View>()) {
  setBackgroundColor(platform::CGColor{0, 0, 0, 0.4});
  box_->setBackgroundColor(colors::kWhite);
  box_->layer().setCornerRadius(14);
  const auto label = std::make_shared<Label>(std::move(message));
  label->setTextStyle({.bold = true, .alignment = TextAlignment::Center});
  label->setFrame({{0, 0}, {kWidth, kMessageHeight}});
  box_->addSubview(label);
  const double buttonWidth = kWidth / static_cast<double>(buttons.size());
  for (std::size_t index = 0; index < buttons.size(); ++index) {
    const auto button = std::make_shared<Button>(std::move(buttons[index]));
    button->setFrame(
        {{buttonWidth * static_cast<double>(index), kMessageHeight}, {buttonWidth, kButtonHeight}});
    button->onTap([this, index] { close(static_cast<long>(index)); });
    box_->addSubview(button);
  }
  addSubview(box_);
}

void Dialog::layoutSubviews() {
  const double height = kMessageHeight + kButtonHeight;
  const platform::CGRect own = bounds();
  box_->setFrame({{own.midX() - kWidth / 2, own.midY() - height / 2}, {kWidth, height}});
}

void Dialog::present(Window& window, std::function<void(long)> closed) {
  closed_ = std::move(closed);
  setFrame(window.bounds());
  window.addSubview(ref());
}

long Dialog::runModal(Window& window, RunLoop& runLoop) {
  const ViewRef alive = ref();
  long result = -1;
  present(window, [&result](long index) { result = index; });
  runLoop.runUntil([&result] { return result >= 0; });
  closed_ = nullptr;
  removeFromSuperview();
  return result;
}

void Dialog::close(long index) {
  const ViewRef alive = ref();
  const auto closed = std::exchange(closed_, nullptr);
  removeFromSuperview();
  if (closed) closed(index);
}

}  // namespace tarni::headless
