// Utilities: stateless helpers on JSON, messages to the person at the device, and the properties
// and pictures of views. Whatever takes a view belongs to the main thread.
#pragma once

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "agent/commands/FunctionCallObject.h"
#include "agent/elements/ElementProperties.h"
#include "agent/elements/MappedActionObject.h"
#include "platform/Task.h"
#include "platform/UIKit/UIApplication.h"
#include "platform/UIKit/UIImage.h"
#include "platform/UIKit/UIView.h"

namespace tarni {

class Utilities {
 public:
  // --- JSON and identifiers; any thread

  // Compact text; null unless given an array or an object. Text that is not UTF-8 is sent with
  // replacement characters.
  static std::optional<std::string> convertNSArrayToString(const nlohmann::ordered_json& array);
  static std::optional<std::string> convertMutableDictionaryToString(
      const nlohmann::ordered_json& dictionary);
  // Null when the text is not a JSON array.
  static std::optional<nlohmann::ordered_json> convertStringToNSArray(std::string_view text);
  // Of a JSON object only what stands under `keys`; see DictionaryReader. Null when the text is not
  // one.
  static std::optional<nlohmann::ordered_json> convertStringToMutableDictionary(
      std::string_view text, std::span<const std::string_view> keys);
  // A new random UUID in upper case.
  static std::string getGUIDString();
  // The decimal digits of `value` with a point, whatever the application's locale.
  static std::string decimalText(double value, int decimals);
  // Lower case of every letter that has one, not only of ASCII.
  static std::string lowercaseString(std::string_view text);

  // --- commands; main thread

  // Takes the fields of a playback command from its JSON (null: none) and notes that playback has
  // started. A field that is null is one that the command lacks.
  static FunctionCallObject createFunctionCallObject(
      const std::optional<nlohmann::ordered_json>& command);

  // --- messages; any thread, shown later on the main thread

  // Shows the text for 5.0 s.
  static void ShowToastMessage(std::string text);
  // Flashes the text in an alert with the buttons "Cancel" and "Ok", dismissed at once.
  static void ShowAlertMessage(std::string text);
  // Dismisses the alert as if its first button had been pressed. Main thread.
  static void dismissAlert(const std::shared_ptr<platform::UIAlertView>& alert);

  // --- properties of views; main thread. What is nil in the view is the empty text.

  static std::string getUIViewClassName(const platform::UIViewRef& view);
  static std::string getUIViewAccesibilityId(const platform::UIViewRef& view);
  static std::string getUIViewAccesibilityLanguage(const platform::UIViewRef& view);
  // The accessibility value, else the label, else the hint.
  static std::string getUIViewAccesibilityLabel(const platform::UIViewRef& view);
  static long getUIViewTag(const platform::UIViewRef& view);
  // The text under which a view is recorded: a field's placeholder, not what was typed.
  static std::string getUIViewText(const platform::UIViewRef& view);
  // The text that the view shows now.
  static std::string getUIViewTextForPlayBack(const platform::UIViewRef& view);
  // Always empty; XPath positions are XpathManager's.
  static std::string getUIViewXpath(const platform::UIViewRef& view);
  static ElementProperties createElementProperties(const platform::UIViewRef& view);
  // The on state of a switch, or of a view that is called one. Throws NSException when the view has
  // no such state.
  static bool isOn(const platform::UIViewRef& view);
  // The action under which a touch on the view is recorded.
  static MappedActionObject getActionAndDataAccordingToComponent(const platform::UIViewRef& view);
  // The same without a word to the log, for a touch that the application has yet to handle.
  static MappedActionObject mappedAction(const platform::UIViewRef& view);

  // --- pictures of views; main thread

  // Null or empty when the view cannot be drawn.
  static platform::Task<platform::UIImageRef> getUIImageOfUIView(platform::UIViewRef view);
  // The 300 by 200 points from 100 left of and above `point` (coordinates of the view).
  static platform::Task<platform::UIImageRef> getUIImageOfUIViewTouchedArea(
      platform::UIViewRef view, platform::CGPoint point);
  // The same as Base64 text of a JPEG of quality 0.6; empty when there is no picture.
  static platform::Task<std::string> getBase64StringOfUIImageOfUIView(platform::UIViewRef view);
  static platform::Task<std::string> getBase64StringOfUIImageOfUIViewTouchedArea(
      platform::UIViewRef view, platform::CGPoint point);
  // Any thread.
  static std::string getBase64StringOfUIImage(const platform::UIImageRef& image);
};

}  // namespace tarni
