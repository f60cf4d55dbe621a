// Checks: whether what a node puts together fits, before it is started. Each throws
// std::runtime_error with a sentence for a person. Any thread.
#pragma once

#include <string>

#include "host/grid/Configuration.h"

namespace tarni::host::grid {

// The WebDriver server answers, is of this version, could start a session and allows as many as
// there are slots: one that is refused there is not tried in another slot.
void requireRelay(const Node& node);

// The hub answers and is of this version of Selenium.
void requireHub(const Hub& hub, const std::string& version);

// The address of this machine on the way to another.
std::string addressTowards(const std::string& host);

}  // namespace tarni::host::grid
