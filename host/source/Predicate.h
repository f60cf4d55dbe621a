// Predicate: conditions of elements as clients of iOS write them: "label CONTAINS[c] 'save' AND
// enabled == 1". Attributes are those of the XML. Plain values, any thread.
#pragma once

#include <functional>
#include <pugixml.hpp>
#include <string>

namespace tarni::host {

using Predicate = std::function<bool(const pugi::xml_node&)>;

// Throws InvalidSelector.
Predicate parsePredicate(const std::string& text);

}  // namespace tarni::host
