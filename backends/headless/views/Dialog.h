// Dialog: a box with a message and buttons in front of everything else in a window. Main thread.
//
// Touches are delivered on their sender's stack. An action that waits in a loop of its own for the
// dialog's result would therefore keep the sender waiting as well: dialogs are presented without
// waiting (`present`), and tell their result later. An action that has to wait (`runModal`) belongs
// to a control that says so with setOpensNestedLoop.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "backends/headless/views/Window.h"

namespace tarni::headless {

class RunLoop;

class Dialog : public View {
 public:
  Dialog(std::string message, std::vector<std::string> buttons);

  // `closed` receives the index of the pressed button, once.
  void present(Window& window, std::function<void(long)> closed);
  // Runs the loop until a button was pressed; its index. -1 when the loop was stopped before.
  long runModal(Window& window, RunLoop& runLoop);

 protected:
  void layoutSubviews() override;

 private:
  void close(long index);

  ViewRef box_;
  std::function<void(long)> closed_;
};

}  // namespace tarni::headless
