// OwnText: keeps what the channel writes into the focused field apart from what a person types
// there, which alone is recorded on the stream of steps. Main thread.
#pragma once

#include <string>

#include "platform/UIKit/UIView.h"

namespace tarni::session {

class OwnText {
 public:
  OwnText() = default;
  OwnText(const OwnText&) = delete;
  OwnText& operator=(const OwnText&) = delete;
  // However the work ends, what it has written is its own.
  ~OwnText();

  // Before each thing that may write.
  void willWrite();

 private:
  void leaveOut();

  platform::UIViewWeakRef field_;
  std::string before_;
};

}  // namespace tarni::session
