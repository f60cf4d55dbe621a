#include "agent/recording/TypedText.h"

#include <utility>

#include "agent/core/state/GlobalVars.h"
#include "agent/core/state/MainThread.h"
#include "platform/Platform.h"

namespace tarni {
namespace {

using platform::UIViewRef;

// Who closes dialogs with the keyboard all day and never taps does not fill the memory.
constexpr std::size_t kMostGone = 64;

}  // namespace

TypedText& TypedText::sharedInstance() {
  assertMainThread();
  static auto* const shared = new TypedText;
  return *shared;
}

void TypedText::follow() {
  const UIViewRef field = GlobalVars::sharedInstance()._editAbleElement();
  if (!RecorderAction::standsInWindow(field)) return letGo();
  look(field);
  if (edited_.draft && edited_.draftedText == edited_.text) return;
  edited_.draftedText = edited_.text;
  edited_.draft = RecorderAction::draftStep({"TypeTextOnEditBox", field, edited_.text, {0, 0}});
}

void TypedText::noteKey() {
  const UIViewRef field = GlobalVars::sharedInstance()._editAbleElement();
  if (RecorderAction::standsInWindow(field)) look(field);
}

void TypedText::noteTap() {
  follow();
  edited_.isToRecord = true;
}

std::vector<StepDraftRef> TypedText::takeGone() {
  if (!RecorderAction::standsInWindow(edited_.field.lock())) letGo();
  std::vector<StepDraftRef> drafts;
  for (Gone& gone : std::exchange(gone_, {})) drafts.push_back(std::move(gone.draft));
  return drafts;
}

std::vector<StepDraftRef> TypedText::takeAll() {
  std::vector<StepDraftRef> drafts = takeGone();
  if (edited_.holdsTyped()) drafts.push_back(edited_.draft);
  forget();
  return drafts;
}

void TypedText::forget() {
  edited_ = {};
}

void TypedText::setAside() {
  const Edited edited = std::exchange(edited_, {});
  if (edited.holdsTyped()) keep(edited);
}

void TypedText::look(const UIViewRef& field) {
  std::string text = RecorderAction::typedText(field);
  if (edited_.field.lock() != field) {
    letGo();
    std::erase_if(gone_, [](const Gone& gone) { return !gone.isTyped; });
    edited_.field = field;
  } else if (text != edited_.text) {
    edited_.isToRecord = true;
  }
  edited_.text = std::move(text);
}

// A field that stands somewhere is not gone: it was left for another one.
void TypedText::letGo() {
  const Edited edited = std::exchange(edited_, {});
  if (edited.holdsText() && !RecorderAction::standsInWindow(edited.field.lock())) keep(edited);
}

void TypedText::keep(const Edited& edited) {
  const UIViewRef field = edited.field.lock();
  GlobalVars& shared = GlobalVars::sharedInstance();
  if (field && shared._editAbleElement() == field) shared.set_editAbleElement(nullptr);
  if (gone_.size() == kMostGone) {
    platform::NSLog("The oldest of %zu typed texts that no tap has followed is dropped", kMostGone);
    gone_.erase(gone_.begin());
  }
  edited.draft->data = edited.text;
  gone_.push_back({edited.draft, edited.isToRecord});
}

}  // namespace tarni
