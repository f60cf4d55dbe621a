#include "host/cli/Subcommands.h"

namespace tarni::host {

namespace {

constexpr bool kNotInScript = false;

constexpr Subcommand kSubcommands[] = {
    {"run", "Start a program with the agent loaded", declareRun, kNotInScript},
    {"attach", "Load the agent into a program that runs already", declareAttach, kNotInScript},
    {"list", "List the programs that run with the agent", declareList, kNotInScript},
    {"inspect", "Show a program from inside, live, in the browser", declareInspect, kNotInScript},
    {"wait", "Wait until the agent answers, or until an element is there or gone", declareWait},
    {"await", "Wait until several conditions hold at once, or the program is at rest",
     declareAwait},
    {"record", "Print what a person does with the program, step by step", declareRecord,
     kNotInScript},
    {"play", "Play a recorded session and say what differed", declarePlay, kNotInScript},
    {"export", "Write a recorded session as a test in Python or JavaScript", declareExport,
     kNotInScript},
    {"spy", "Print the element that a person points at, and how to find it", declareSpy,
     kNotInScript},
    {"find", "Find elements; prints one identifier a line", declareFind},
    {"editable", "Find text fields; prints one identifier a line", declareEditable},
    {"tree", "Print the view tree", declareTree},
    {"describe", "Print what the agent knows about the elements on screen", declareDescribe},
    {"windows", "List the windows; or activate, resize or close one", declareWindows},
    {"snapshot", "Take a picture of the window or of an element", declareSnapshot},
    {"click", "Click an element", declareClick},
    {"hover", "Move the mouse over an element", declareHover},
    {"drag", "Drag from one place to another", declareDrag},
    {"scroll", "Turn the wheel, or bring an element or an item into sight", declareScroll},
    {"type", "Type text into an element", declareType},
    {"press", "Press keys", declarePress},
    {"set", "Set the value of a control: choose, switch, turn to", declareSet},
    {"focus", "Give an element the keyboard", declareFocus},
    {"expand", "Open a node of a tree", declareExpand},
    {"collapse", "Close a node of a tree", declareCollapse},
    {"swipe", "Swipe on an element, or on the window's first view", declareSwipe},
    {"swipeto", "Scroll every scrolling view by 200 points", declareSwipeTo},
    {"swipereset", "Scroll every scrolling view back to its start", declareSwipeReset},
    {"text", "Print an element's text", declareText},
    {"enabled", "Tell whether an element takes touches", declareEnabled},
    {"displayed", "Tell whether an element is on the screen", declareDisplayed},
    {"selected", "Tell whether a switch is on", declareSelected},
    {"width", "Print an element's width", declareWidth},
    {"height", "Print an element's height", declareHeight},
    {"highlight", "Mark an element on screen for a second", declareHighlight},
    {"costs", "Print what the program has cost since its channel opened", declareCosts},
    {"call", "Call a method of the session channel and print the answer", declareCall},
    {"send", "Send a playback command as JSON and print the answer", declareSend},
    {"reference", "Print what is installed beside the tool", declareReference, kNotInScript},
    {"webdriver", "Serve clients of WebDriver: Selenium, Appium and those like them",
     declareWebDriver, kNotInScript},
    {"grid", "Share programs on many machines by Selenium Grid", declareGrid, kNotInScript},
    {"scripts", "Offer the scripts for web pages", declareScripts, kNotInScript},
    {"do", "Carry out commands, one a line, in one connection", declareDo, kNotInScript},
};

}  // namespace

std::span<const Subcommand> subcommands() {
  return kSubcommands;
}

}  // namespace tarni::host
