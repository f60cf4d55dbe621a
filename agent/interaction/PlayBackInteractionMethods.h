// PlayBackInteractionMethods: what playback does to a view that it found. Main thread, stateless.
//
// The answers are true when the action was performed and false when this view cannot take it.
// NSException leaves them when a view that only looks like a switch by its class name is none.
#pragma once

#include <string>

#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class PlayBackInteractionMethods {
 public:
  // Toggles a switch (the view itself, or one round it), taps anything else. What the application
  // hears of a toggle is the platform's affair (UISwitch::setOn).
  platform::Task<bool> performClickOnUIView(platform::UIViewRef view);

  // Replaces the text of a text field; false for any other view.
  platform::Task<bool> performTypeTextOnUIView(platform::UIViewRef view, std::string text);
};

}  // namespace tarni
