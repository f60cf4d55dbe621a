// Finding: how clients say what they look for, and the search for it in the program itself. The
// session's thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/session_client/Selector.h"
#include "host/source/XPathSelector.h"
#include "host/webdriver/Session.h"

namespace tarni::host::webdriver {

// What the program looks for by itself: the first of these of which there is any.
using Selectors = std::vector<Selector>;
// What is looked for in its XML.
using TreeSearch =
    std::function<std::vector<long>(const SourceTree& tree, std::optional<long> within)>;
// One by its number, which is to be that in the XML.
struct Numbered {
  NumberedSelector wanted;
  TreeSearch inTree;
};
using Query = std::variant<Selectors, Numbered, TreeSearch>;

// An XPath that is evaluated at an element (`isBelow`) may still begin at the root. Throws Error
// ("invalid selector") for a strategy that is none of the program's own, and InvalidSelector.
Query queryFor(const std::string& strategy, const std::string& value, bool isBelow);

// Waits as long as the implicit time-out says for there to be any; `most` is 0 for all.
std::vector<long> search(Session& session, const Query& query, std::optional<long> within,
                         std::size_t most);

}  // namespace tarni::host::webdriver
