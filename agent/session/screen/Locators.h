// Locators: the ways to find an element again, each tried at that moment. Main thread.
#pragma once

#include <string>
#include <vector>

#include "agent/session/screen/Criteria.h"
#include "platform/UIKit/UIView.h"

namespace tarni::session {

struct Locator {
  Criteria find;  // of element.find
  std::size_t matches = 0;
  double milliseconds = 0;  // of the walk that counted them
};

// How a person came to it. A field that keys went to is found again by its focus, if it has no
// name: one that is opened in the cell of a table, say.
enum class ReachedBy { Pointer, Keys };

// Best first: those that fit this element alone, from its identifier to what it shows and asks for;
// its position is the last of them. Those that fit others as well come behind.
std::vector<Locator> locatorsOf(const platform::UIViewRef& view,
                                ReachedBy way = ReachedBy::Pointer);

// A JSON array of them.
std::string written(const std::vector<Locator>& locators);

}  // namespace tarni::session
