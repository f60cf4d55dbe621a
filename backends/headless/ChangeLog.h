// ChangeLog: what changes among the views in windows, from the first time that somebody asks. Main
// thread.
#pragma once

#include "platform/UIKit/UIApplication.h"

namespace tarni::headless {

class ChangeLog {
 public:
  static ChangeLog& sharedInstance();

  // What the view tells of itself is different.
  void noteContent(const platform::UIViewRef& view);
  // Which views there are, where they stand and which are hidden is different.
  void noteStructure();
  // Hears of all of it, as what changes is painted anew; null ends that.
  void setObserver(platform::PaintObserver* observer) { observer_ = observer; }

  platform::ViewChanges take();

 private:
  // Where nobody asks nothing is kept.
  bool hasStructureChanged_ = true;
  std::vector<platform::UIViewWeakRef> views_;
  platform::PaintObserver* observer_ = nullptr;
};

}  // namespace tarni::headless
