// What the kinds of views tell (platform/UIKit/UIControls.h), asked of any view: null for a view
// that is not of the kind. Main thread.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <typeinfo>

#include "platform/UIKit/UIView.h"

namespace tarni {

// The view as one of its kinds without taking a share in it. Where a kind stands in a C++ type, or
// that it does not, is the same for all views of the type: `dynamic_cast`, which takes longer than
// all else that is asked of a view, is needed once for each.
template <typename Kind>
const Kind* kindOf(const platform::UIViewRef& view) {
  struct Known {
    const std::type_info* type = nullptr;
    bool isOfKind = false;
    std::ptrdiff_t offset = 0;
  };
  static std::array<Known, 64> all;
  const platform::UIView* const base = view.get();
  if (!base) return nullptr;
  const std::type_info& type = typeid(*base);
  Known& known = all[std::hash<const void*>()(&type) / alignof(std::type_info) % all.size()];
  if (known.type != &type) {
    const Kind* const kind = dynamic_cast<const Kind*>(base);
    known = {&type, kind != nullptr};
    if (kind) {
      known.offset = reinterpret_cast<const char*>(kind) - reinterpret_cast<const char*>(base);
    }
  }
  if (!known.isOfKind) return nullptr;
  return reinterpret_cast<const Kind*>(reinterpret_cast<const char*>(base) + known.offset);
}

// What the kind's getter gives.
template <typename Kind>
std::optional<std::string> ask(const platform::UIViewRef& view,
                               std::optional<std::string> (Kind::*getter)() const) {
  const Kind* const kind = kindOf<Kind>(view);
  return kind ? (kind->*getter)() : std::nullopt;
}

// Of a segmented control; null when no segment is selected, too.
std::optional<std::string> selectedSegmentTitle(const platform::UIViewRef& view);

// Whether it is a field that does not show what is typed.
bool isSecure(const platform::UIViewRef& view);

}  // namespace tarni
