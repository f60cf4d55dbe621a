// OwnActs: keeps what the agent does by itself while it records, for a client of the session
// channel, apart from what a person does, which alone is recorded on the stream of steps.
//
// Own input does not come by the recorder, but what it leaves behind does: text in a field, the
// focus, and in a page events that look like a person's. So the text that own acts have changed or
// turned to is left out, that which a person had typed there waits for the next tap, and pages are
// told whose acts follow. Main thread; in one stretch without a run of the main queue in between.
#pragma once

#include <string>
#include <vector>

#include "platform/Task.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class OwnActs {
 public:
  OwnActs() = default;
  OwnActs(const OwnActs&) = delete;
  OwnActs& operator=(const OwnActs&) = delete;

  // Before the first of them. Ends once the pages know.
  platform::Task<void> begin();
  // After each that may have moved the focus, and after the last. Throws nothing.
  void settle() noexcept;
  // What stands in the view, or in the fields in it, did not come from a person, whether it has the
  // focus or not.
  static void leaveOut(const platform::UIViewRef& view);

 private:
  struct Field {
    platform::UIViewWeakRef view;
    std::string text;  // of a person's
  };

  static std::vector<Field> focusedFields(const platform::UIViewRef& last);

  std::vector<Field> focused_;  // as they were when the acts began, or settled
};

}  // namespace tarni
