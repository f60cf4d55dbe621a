// ClassChain: the way down a tree as clients of iOS write it:
// "**/UITableView/UITableViewCell[`label
// == 'Row 3'`][1]". Plain values, any thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/source/SourceTree.h"

namespace tarni::host {

// What stands at its end, from the element `within` or the root down. Throws InvalidSelector.
std::vector<SourceTree::Handle> findByClassChain(const SourceTree& tree, const std::string& chain,
                                                 std::optional<SourceTree::Handle> within);

}  // namespace tarni::host
