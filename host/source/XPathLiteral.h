// XPathLiteral: a text as XPath writes it. Any thread.
#pragma once

#include <string>

namespace tarni::host {

std::string xpathLiteral(const std::string& text);

}  // namespace tarni::host
