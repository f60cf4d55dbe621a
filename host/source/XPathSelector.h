// XPathSelector: the XPath that clients write most, one element by its class and what it says, as a
// selector, so that the program looks for it by itself and need not tell of all that it shows.
// Plain values, any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "host/session_client/Selector.h"

namespace tarni::host {

// Of "//UIButton[@text='OK' and @visible='true']"; null for what says more than selectors know. The
// text is an XPath, evaluated at the root.
std::optional<Selector> selectorIn(const std::string& xpath);

// One of those that a selector finds, all of which are of its class, in that very case.
struct NumberedSelector {
  Selector selector;
  std::size_t number = 1;  // the first is 1
};

// The same of "(//UIButton[@visible='true'])[3]".
std::optional<NumberedSelector> numberedSelectorIn(const std::string& xpath);

}  // namespace tarni::host
