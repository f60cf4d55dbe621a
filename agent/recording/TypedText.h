// TypedText: what is typed into the field that is being edited, kept so that it outlives the field.
//
// A dialog that is closed with the keyboard takes its fields away before any tap could record what
// was typed into them. So the text is followed while the field stands in its window; the step of a
// field that has gone waits for the next tap, like the text of a field that is still there. So does
// a text that nobody touched, with which the dialog opened, unless another field comes to be edited
// before that tap: it is told of a field that merely has the focus as well. Main thread.
#pragma once

#include <string>
#include <vector>

#include "agent/recording/RecorderAction.h"

namespace tarni {

class TypedText {
 public:
  static TypedText& sharedInstance();

  // Looks at the field that is being edited. The polling hook calls it.
  void follow();
  // The application is about to handle a key, perhaps the one that closes the dialog. Every key
  // comes by here, so only the text is read.
  void noteKey();
  // The application is about to handle a tap: what the field holds now is recorded, whatever
  // becomes of it.
  void noteTap();

  // The steps of fields that have gone, in the order in which they went. Each is given once.
  std::vector<StepDraftRef> takeGone();
  // The same, and the step of the field that is still there, as it was last followed.
  std::vector<StepDraftRef> takeAll();
  // The text of the field that is being edited was recorded.
  void forget();
  // Another hand than the person's has written there or turned away from it: what the person had
  // typed when it was last followed waits for the next tap like that of a field that has gone.
  void setAside();

 private:
  struct Edited {
    platform::UIViewWeakRef field;
    std::string text;
    bool isToRecord = false;  // since it has changed, or a tap came
    StepDraftRef draft;
    std::string draftedText;

    bool holdsText() const { return draft && !text.empty(); }
    bool holdsTyped() const { return isToRecord && holdsText(); }
  };

  struct Gone {
    StepDraftRef draft;
    bool isTyped;
  };

  void look(const platform::UIViewRef& field);
  void letGo();
  void keep(const Edited& edited);

  Edited edited_;
  std::vector<Gone> gone_;
};

}  // namespace tarni
