// Act: one thing that a person did, however many events it took. Plain value.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/QuartzCore/CGGeometry.h"
#include "platform/UIKit/InputDevices.h"

namespace tarni {

// What was told of an element when the hand came to it.
struct PortraitText {
  std::string text;
  // Of an element of a page, which is told later; null when the page has not said.
  struct InPage {
    platform::CGPoint corner;  // its upper left one, in the web view
    bool takesText = false;
    bool isSecure = false;
  };
  std::optional<InPage> inPage = {};
  bool isComplete = true;
};
// Null for none.
using Portrait = std::shared_ptr<const PortraitText>;

namespace acts {
inline constexpr std::string_view kClick = "click";
inline constexpr std::string_view kLongPress = "longPress";
inline constexpr std::string_view kDrag = "drag";
inline constexpr std::string_view kWheel = "wheel";
inline constexpr std::string_view kHover = "hover";    // that opened something
inline constexpr std::string_view kKey = "key";        // with its modifiers
inline constexpr std::string_view kType = "type";      // a text into one element
inline constexpr std::string_view kChoose = "choose";  // the value of a control
inline constexpr std::string_view kSwitch = "switch";  // on or off
inline constexpr std::string_view kExpand = "expand";  // a node of a tree, or close it
inline constexpr std::string_view kMenu = "menu";      // the entries down to one
inline constexpr std::string_view kResize = "resize";  // a window
inline constexpr std::string_view kClose = "close";    // the same
inline constexpr std::string_view kCheck = "check";    // what is there is to be there again
}  // namespace acts

struct Act {
  long order = 0;       // from 1
  double time = 0;      // of its first event, on the clock of systemUptime
  double duration = 0;  // seconds, to the last
  std::string_view kind;
  Portrait element;

  // Of the pointer.
  std::optional<platform::PointerButton> button = {};
  int count = 0;  // clicks, or repetitions of a key
  std::string modifiers = {};
  std::optional<platform::CGPoint> at = {};  // from the element's upper left corner
  std::vector<platform::CGPoint> way = {};   // of a drag: steps on its way, from where it began
  Portrait target = nullptr;                 // of a drag, if it is another element
  std::optional<platform::CGPoint> targetAt = {};
  platform::CGPoint notches = {};
  std::vector<Portrait> path = {};  // of a menu

  std::string key = {};   // "Control+s"
  std::string text = {};  // as it was typed; empty for a secret
  bool isSecret = false;
  // A text in a page that has not said yet whether it takes it; `key` is the one key so far.
  bool mayBeKeys = false;
  std::optional<std::string> value = {};   // that came of it
  std::optional<std::size_t> choice = {};  // its place among the choices, if it is one of a list
  std::optional<bool> state = {};          // the same
  std::optional<platform::CGSize> size = {};
};

}  // namespace tarni
