// The handlers of the table of commands (host/webdriver/Commands.cpp), by the file that has them.
// The session's thread; all throw as Session::call does.
#pragma once

#include <optional>
#include <string>

#include "host/webdriver/Command.h"

namespace tarni::host::webdriver {

// Finding.cpp
Json findElement(Session& session, const Arguments& arguments);
Json findElements(Session& session, const Arguments& arguments);
Json findBelow(Session& session, const Arguments& arguments);
Json findAllBelow(Session& session, const Arguments& arguments);
Json activeElement(Session& session, const Arguments& arguments);

// Reading.cpp
Json attribute(Session& session, const Arguments& arguments);
Json isDisplayed(Session& session, const Arguments& arguments);
Json isEnabled(Session& session, const Arguments& arguments);
Json isSelected(Session& session, const Arguments& arguments);
Json label(Session& session, const Arguments& arguments);
Json place(Session& session, const Arguments& arguments);
Json source(Session& session, const Arguments& arguments);
Json tagName(Session& session, const Arguments& arguments);
Json text(Session& session, const Arguments& arguments);

// Acting.cpp
Json clear(Session& session, const Arguments& arguments);
Json click(Session& session, const Arguments& arguments);
Json sendKeys(Session& session, const Arguments& arguments);
std::string typed(const Arguments& arguments);  // the text that a client sends

// Actions.cpp
Json performActions(Session& session, const Arguments& arguments);
Json releaseActions(Session& session, const Arguments& arguments);

// Pictures.cpp
Json elementPicture(Session& session, const Arguments& arguments);
Json picture(Session& session, const Arguments& arguments);

// Windows.cpp
Json closeWindow(Session& session, const Arguments& arguments);
Json currentWindow(Session& session, const Arguments& arguments);
Json maximize(Session& session, const Arguments& arguments);
Json orientation(Session& session, const Arguments& arguments);
Json setOrientation(Session& session, const Arguments& arguments);
Json resizeWindow(Session& session, const Arguments& arguments);
Json switchToWindow(Session& session, const Arguments& arguments);
Json title(Session& session, const Arguments& arguments);
Json windowPlace(Session& session, const Arguments& arguments);
Json windows(Session& session, const Arguments& arguments);

// Alerts.cpp
Json acceptAlert(Session& session, const Arguments& arguments);
// What the dialog says that keeps the person from the page; null when none does.
std::optional<std::string> alertOver(Session& session, long page);
Json alertText(Session& session, const Arguments& arguments);
Json dismissAlert(Session& session, const Arguments& arguments);
Json typeIntoAlert(Session& session, const Arguments& arguments);

// Scripts.cpp
Json executeAsync(Session& session, const Arguments& arguments);
Json executeSync(Session& session, const Arguments& arguments);
Json runAsyncInPage(Session& session, const Arguments& arguments);
Json runInPage(Session& session, const Arguments& arguments);

// State.cpp
Json appState(Session& session, const Arguments& arguments);
Json back(Session& session, const Arguments& arguments);
Json capabilities(Session& session, const Arguments& arguments);
Json doNothing(Session& session, const Arguments& arguments);
Json logTypes(Session& session, const Arguments& arguments);
Json log(Session& session, const Arguments& arguments);
Json refuseFile(Session& session, const Arguments& arguments);
Json setSettings(Session& session, const Arguments& arguments);
Json setTimeouts(Session& session, const Arguments& arguments);
Json settings(Session& session, const Arguments& arguments);
Json timeouts(Session& session, const Arguments& arguments);

// Contexts.cpp
Json context(Session& session, const Arguments& arguments);
Json contexts(Session& session, const Arguments& arguments);
Json switchToContext(Session& session, const Arguments& arguments);

// Pages.cpp: the same in a page, and what only pages have.
Json addCookie(Session& session, const Arguments& arguments);
// What a command of the page's script answers (webscripts/src/webdriver.js), of the element in the
// path, with the name behind it.
Json askOfElement(Session& session, const Arguments& arguments, const char* command);
Json backInPage(Session& session, const Arguments& arguments);
Json clickInPage(Session& session, const Arguments& arguments);
Json cookieNamed(Session& session, const Arguments& arguments);
Json cookies(Session& session, const Arguments& arguments);
Json deleteCookie(Session& session, const Arguments& arguments);
Json deleteCookies(Session& session, const Arguments& arguments);
Json findAllInPage(Session& session, const Arguments& arguments);
Json findInPage(Session& session, const Arguments& arguments);
Json forward(Session& session, const Arguments& arguments);
Json leaveFrame(Session& session, const Arguments& arguments);
Json navigate(Session& session, const Arguments& arguments);
Json refresh(Session& session, const Arguments& arguments);
Json sendKeysInPage(Session& session, const Arguments& arguments);
Json switchToFrame(Session& session, const Arguments& arguments);

}  // namespace tarni::host::webdriver
