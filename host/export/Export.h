// Export: a session as a test that a person can read and change, which a usual client of WebDriver
// runs against `tarni webdriver`: pytest with Selenium's client, webdriverio. Plain functions, any
// thread.
#pragma once

#include <string>

#include "host/session/Session.h"

namespace tarni::host {

enum class ExportLanguage { Python, JavaScript };

// The whole file. `name` is what the test is called, in any characters.
std::string exportedTest(const Session& session, ExportLanguage language, const std::string& name);

}  // namespace tarni::host
