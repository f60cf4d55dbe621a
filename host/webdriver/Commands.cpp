// The table of commands, in the order of the standard; what it does not have stands behind. The
// last column is the handler in a page.
#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>

#include "host/webdriver/Page.h"
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

// The name of a command of the page's script.
template <std::size_t Size>
struct Word {
  constexpr Word(const char (&literal)[Size]) { std::copy_n(literal, Size, text); }
  char text[Size];
};

template <Word Name>
Json ofElement(Session& session, const Arguments& arguments) {
  return askOfElement(session, arguments, Name.text);
}

template <Word Name>
Json ofPage(Session& session, const Arguments&) {
  return askPage(session, Name.text);
}

constexpr Command kCommands[] = {
    {"GET", "", capabilities, capabilities},
    {"GET", "/timeouts", timeouts, timeouts},
    {"POST", "/timeouts", setTimeouts, setTimeouts},
    {"POST", "/back", back, backInPage},
    {"POST", "/url", nullptr, navigate},
    {"GET", "/url", nullptr, ofPage<"url">},
    {"POST", "/forward", nullptr, forward},
    {"POST", "/refresh", nullptr, refresh},
    {"GET", "/title", title, ofPage<"title">},
    {"GET", "/window", currentWindow, currentWindow},
    {"DELETE", "/window", closeWindow, closeWindow},
    {"POST", "/window", switchToWindow, switchToWindow},
    {"GET", "/window/handles", windows, windows},
    {"POST", "/frame", nullptr, switchToFrame},
    {"POST", "/frame/parent", nullptr, leaveFrame},
    {"GET", "/window/rect", windowPlace, windowPlace},
    {"POST", "/window/rect", resizeWindow, resizeWindow},
    {"POST", "/window/maximize", maximize, maximize},
    {"POST", "/window/fullscreen", maximize, maximize},
    {"POST", "/element", findElement, findInPage},
    {"POST", "/elements", findElements, findAllInPage},
    {"GET", "/element/active", activeElement, ofPage<"active">},
    {"POST", "/element/{element}/element", findBelow, findInPage},
    {"POST", "/element/{element}/elements", findAllBelow, findAllInPage},
    {"GET", "/element/{element}/selected", isSelected, ofElement<"isSelected">},
    {"GET", "/element/{element}/attribute/{name}", attribute, ofElement<"attribute">},
    {"GET", "/element/{element}/property/{name}", attribute, ofElement<"property">},
    {"GET", "/element/{element}/css/{name}", nullptr, ofElement<"css">},
    {"GET", "/element/{element}/shadow", nullptr, ofElement<"shadow">},
    {"POST", "/shadow/{element}/element", nullptr, findInPage},
    {"POST", "/shadow/{element}/elements", nullptr, findAllInPage},
    {"GET", "/element/{element}/text", text, ofElement<"text">},
    {"GET", "/element/{element}/name", tagName, ofElement<"name">},
    {"GET", "/element/{element}/rect", place, ofElement<"rect">},
    {"GET", "/element/{element}/enabled", isEnabled, ofElement<"isEnabled">},
    {"GET", "/element/{element}/computedrole", tagName, ofElement<"role">},
    {"GET", "/element/{element}/computedlabel", label, ofElement<"label">},
    {"GET", "/element/{element}/displayed", isDisplayed, ofElement<"isDisplayed">},
    {"POST", "/element/{element}/click", click, clickInPage},
    {"POST", "/element/{element}/clear", clear, ofElement<"clear">},
    {"POST", "/element/{element}/value", sendKeys, sendKeysInPage},
    {"GET", "/source", source, ofPage<"source">},
    {"POST", "/execute/sync", executeSync, runInPage},
    {"POST", "/execute/async", executeAsync, runAsyncInPage},
    {"GET", "/cookie", nullptr, cookies},
    {"GET", "/cookie/{name}", nullptr, cookieNamed},
    {"POST", "/cookie", nullptr, addCookie},
    {"DELETE", "/cookie/{name}", nullptr, deleteCookie},
    {"DELETE", "/cookie", nullptr, deleteCookies},
    {"POST", "/actions", performActions, performActions},
    {"DELETE", "/actions", releaseActions, releaseActions},
    {"POST", "/alert/dismiss", dismissAlert, dismissAlert},
    {"POST", "/alert/accept", acceptAlert, acceptAlert},
    {"GET", "/alert/text", alertText, alertText},
    {"POST", "/alert/text", typeIntoAlert, typeIntoAlert},
    {"GET", "/screenshot", picture, picture},
    {"GET", "/element/{element}/screenshot", elementPicture, nullptr},

    {"GET", "/contexts", contexts, contexts},
    {"GET", "/context", context, context},
    {"POST", "/context", switchToContext, switchToContext},
    {"GET", "/appium/contexts", contexts, contexts},
    {"GET", "/appium/context", context, context},
    {"POST", "/appium/context", switchToContext, switchToContext},
    {"GET", "/appium/settings", settings, settings},
    {"POST", "/appium/settings", setSettings, setSettings},
    {"GET", "/orientation", orientation, orientation},
    {"POST", "/orientation", setOrientation, setOrientation},
    {"POST", "/appium/device/activate_app", doNothing, doNothing},
    {"POST", "/appium/device/app_state", appState, appState},
    {"POST", "/appium/device/hide_keyboard", doNothing, doNothing},
    {"GET", "/se/log/types", logTypes, logTypes},
    {"POST", "/se/log", log, log},
    {"POST", "/se/file", refuseFile, refuseFile},
};

}  // namespace

std::span<const Command> commands() {
  return kCommands;
}

}  // namespace tarni::host::webdriver
