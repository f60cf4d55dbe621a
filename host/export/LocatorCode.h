// LocatorCode: a way to find an element as each of those writes it who look for elements: clients
// of WebDriver and the command line. Plain values.
#pragma once

#include <string>

#include "host/export/ExportedElement.h"
#include "host/guard/Json.h"

namespace tarni::host {

// `By.ID, "name"` of Selenium in Python, the selector of WebdriverIO with its quotes, and
// `By.id("name")` of Selenium in Java.
std::string inPython(const ExportedElement& element);
std::string inJavaScript(const ExportedElement& element);
std::string inJava(const ExportedElement& element);

// Whole lines to be copied, by the name of their language. `find` has the parameters of
// `element.find`, `program` is what `tarni list` calls the program.
Json linesOfCode(const Json& find, const std::string& program);

}  // namespace tarni::host
