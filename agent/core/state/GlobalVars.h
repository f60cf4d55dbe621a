// GlobalVars: the process-wide state through which the parts of the agent talk to each other.
//
// Every property starts as nil and is replaced whole; each accessor works on a copy under one lock,
// so that any thread may call it. Flags are the texts "true" and "false", compared exactly; nil
// counts as false. Views are held weakly: a getter answers null once the view has gone. What is
// done with a view that a getter gave belongs to the main thread.
#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "platform/UIKit/UIView.h"

namespace tarni {

class GlobalVars {
 public:
  using Text = std::optional<std::string>;

  static GlobalVars& sharedInstance();

  // True exactly for the text "true".
  static bool isTrue(const Text& flag) { return flag == "true"; }

  // The text field that is being edited while recording.
  platform::UIViewRef _editAbleElement() const { return copy(editAbleElement_).lock(); }
  void set_editAbleElement(const platform::UIViewRef& view) { assign(editAbleElement_, view); }

  // The key window as the polling hook last saw it: the views of any other one have no identity yet
  // when they are touched.
  platform::UIWindowRef _uiWindow() const { return copy(uiWindow_).lock(); }
  void set_uiWindow(const platform::UIWindowRef& window) { assign(uiWindow_, window); }

  // Kept, as is the window class, for whoever looks at the state from outside; the agent does not
  // read it.
  platform::UIWindowRef _uiWindow_Dialog() const { return copy(uiWindowDialog_).lock(); }
  void set_uiWindow_Dialog(const platform::UIWindowRef& window) { assign(uiWindowDialog_, window); }

  // Steps recorded inside a web page, as text ready to send.
  Text _hybridRecordedSteps() const { return copy(hybridRecordedSteps_); }
  void set_hybridRecordedSteps(Text steps) { assign(hybridRecordedSteps_, std::move(steps)); }
  // Reads the steps and sets them to nil in one go, so that none stored in between are lost.
  Text take_hybridRecordedSteps();

  // The web view that was last found ready.
  platform::UIViewRef _currentWebView() const { return copy(currentWebView_).lock(); }
  void set_currentWebView(const platform::UIViewRef& view) { assign(currentWebView_, view); }

  Text _spyMode() const { return copy(spyMode_); }
  void set_spyMode(Text flag) { assign(spyMode_, std::move(flag)); }

  Text _isPlaybackStarted() const { return copy(isPlaybackStarted_); }
  void set_isPlaybackStarted(Text flag) { assign(isPlaybackStarted_, std::move(flag)); }

  // The image that web steps carry.
  Text _webViewBase64Image() const { return copy(webViewBase64Image_); }
  void set_webViewBase64Image(Text image) { assign(webViewBase64Image_, std::move(image)); }

  // "LOADED" or "LOADING".
  Text _viewControllerLoaded() const { return copy(viewControllerLoaded_); }
  void set_viewControllerLoaded(Text state) { assign(viewControllerLoaded_, std::move(state)); }

  // The window class itself, not a window.
  platform::Class _currentUIWindow() const { return copy(currentUIWindow_); }
  void set_currentUIWindow(platform::Class windowClass) { assign(currentUIWindow_, windowClass); }

 private:
  template <typename Value>
  Value copy(const Value& value) const {
    const std::lock_guard lock(mutex_);
    return value;
  }
  template <typename Value, typename Source>
  void assign(Value& value, Source&& source) {
    const std::lock_guard lock(mutex_);
    value = std::forward<Source>(source);
  }

  mutable std::mutex mutex_;
  platform::UIViewWeakRef editAbleElement_;
  platform::UIViewWeakRef uiWindow_;
  platform::UIViewWeakRef uiWindowDialog_;
  Text hybridRecordedSteps_;
  platform::UIViewWeakRef currentWebView_;
  Text spyMode_;
  Text isPlaybackStarted_;
  Text webViewBase64Image_;
  Text viewControllerLoaded_;
  platform::Class currentUIWindow_ = nullptr;
};

}  // namespace tarni
