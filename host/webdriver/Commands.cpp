// The table of commands, in the order of the standard; what it does not have stands behind.
#include "host/webdriver/commands/Handlers.h"

namespace tarni::host::webdriver {

namespace {

constexpr Command kCommands[] = {
    {"GET", "", capabilities},
    {"GET", "/timeouts", timeouts},
    {"POST", "/timeouts", setTimeouts},
    {"POST", "/back", back},
    {"GET", "/title", title},
    {"GET", "/window", currentWindow},
    {"DELETE", "/window", closeWindow},
    {"POST", "/window", switchToWindow},
    {"GET", "/window/handles", windows},
    {"GET", "/window/rect", windowPlace},
    {"POST", "/window/rect", resizeWindow},
    {"POST", "/window/maximize", maximize},
    {"POST", "/window/fullscreen", maximize},
    {"POST", "/element", findElement},
    {"POST", "/elements", findElements},
    {"GET", "/element/active", activeElement},
    {"POST", "/element/{element}/element", findBelow},
    {"POST", "/element/{element}/elements", findAllBelow},
    {"GET", "/element/{element}/selected", isSelected},
    {"GET", "/element/{element}/attribute/{name}", attribute},
    {"GET", "/element/{element}/property/{name}", attribute},
    {"GET", "/element/{element}/text", text},
    {"GET", "/element/{element}/name", tagName},
    {"GET", "/element/{element}/rect", place},
    {"GET", "/element/{element}/enabled", isEnabled},
    {"GET", "/element/{element}/computedrole", tagName},
    {"GET", "/element/{element}/computedlabel", label},
    {"GET", "/element/{element}/displayed", isDisplayed},
    {"POST", "/element/{element}/click", click},
    {"POST", "/element/{element}/clear", clear},
    {"POST", "/element/{element}/value", sendKeys},
    {"GET", "/source", source},
    {"POST", "/execute/sync", executeSync},
    {"POST", "/execute/async", executeAsync},
    {"POST", "/actions", performActions},
    {"DELETE", "/actions", releaseActions},
    {"POST", "/alert/dismiss", dismissAlert},
    {"POST", "/alert/accept", acceptAlert},
    {"GET", "/alert/text", alertText},
    {"POST", "/alert/text", typeIntoAlert},
    {"GET", "/screenshot", picture},
    {"GET", "/element/{element}/screenshot", elementPicture},

    {"GET", "/contexts", contexts},
    {"GET", "/context", context},
    {"POST", "/context", switchToContext},
    {"GET", "/appium/contexts", contexts},
    {"GET", "/appium/context", context},
    {"POST", "/appium/context", switchToContext},
    {"GET", "/appium/settings", settings},
    {"POST", "/appium/settings", setSettings},
    {"GET", "/orientation", orientation},
    {"POST", "/appium/device/activate_app", doNothing},
    {"POST", "/appium/device/app_state", appState},
    {"POST", "/appium/device/hide_keyboard", doNothing},
    {"GET", "/se/log/types", logTypes},
    {"POST", "/se/log", log},
    {"POST", "/se/file", refuseFile},
};

}  // namespace

std::span<const Command> commands() {
  return kCommands;
}

}  // namespace tarni::host::webdriver
