#include <algorithm>
#include <array>
#include <vector>

#include "agent/session/Handlers.h"
#include "agent/session/Method.h"
#include "agent/session/Selector.h"

namespace tarni::session {
namespace {

using Row = std::vector<Parameter>;

constexpr Parameter theElement{"element", Kind::Integer, required, "Its handle."};
constexpr Parameter theWindow{"window", Kind::Integer, optional,
                              "Its handle, or that of an element in it; the key window without."};

// Some rows are longer by the parameters of a selector.
const Row& findRow() {
  static const auto* const row = [] {
    auto* const made = new Row(Selector::parameters().begin(), Selector::parameters().end());
    made->push_back({"all", Kind::Flag, optional,
                     "False for the first alone, and `no such element` when there is none. True "
                     "without."});
    made->push_back({"limit", Kind::Integer, optional, "At most so many."});
    return made;
  }();
  return *row;
}

constexpr Parameter treeGet[] = {
    {"since", Kind::Integer, optional,
     "The version that the client knows: only what changed since is told. Without it, or when it "
     "is not known any more what changed, the whole tree."},
    {"picture", Kind::Flag, optional, "With a picture of each window, of the same moment."},
};
constexpr Parameter elementOnly[] = {theElement};
constexpr Parameter elementClick[] = {
    theElement,
    {"button", Kind::Text, optional, "left (the usual), right, middle, back or forward."},
    {"count", Kind::Integer, optional, "2 for a double click."},
    {"modifiers", Kind::Text, optional, "Keys that are down meanwhile: `Control+Shift`."},
};
constexpr Parameter elementText[] = {theElement, {"text", Kind::Text, required, "The text."}};
constexpr Parameter elementValue[] = {
    theElement,
    {"value", Kind::Any, required,
     "True or false for a switch; the text to choose or the number for a combo box, a spin box, a "
     "slider, a tab bar; the text of a text field."}};
constexpr Parameter elementExpanded[] = {
    theElement, {"expanded", Kind::Flag, required, "Whether what is below it is shown."}};
constexpr Parameter windowOnly[] = {theWindow};
constexpr Parameter windowSize[] = {
    theWindow,
    {"width", Kind::Number, required, "In points."},
    {"height", Kind::Number, required, "In points."},
};
constexpr Parameter inputPointer[] = {
    {"steps", Kind::List, required,
     "In their order: `{\"move\": TARGET}`, `{\"down\": BUTTON}`, `{\"up\": BUTTON}`, `{\"pause\": "
     "MILLISECONDS}`."}};
constexpr Parameter inputWheel[] = {
    {"at", Kind::Object, optional, "The target to turn it over; where the pointer is without."},
    {"right", Kind::Number, optional, "Notches."},
    {"down", Kind::Number, optional, "Notches."},
};
constexpr Parameter inputKeys[] = {
    {"steps", Kind::List, required,
     "In their order: `\"Control+a\"` for keys that go down and up together, `{\"down\": KEY}`, "
     "`{\"up\": KEY}`, `{\"pause\": MILLISECONDS}`. Keys are called as in the W3C's "
     "`KeyboardEvent.key`: `Enter`, `F2`, `ArrowLeft`, `Shift`, `a`, `Ä`."},
    {"element", Kind::Integer, optional, "The element that gets the focus first."},
};
constexpr Parameter inputText[] = {
    {"text", Kind::Text, required, "In any script."},
    {"element", Kind::Integer, optional, "The element that gets the focus first."},
};
constexpr Parameter inputDrag[] = {
    {"from", Kind::Object, required, "The target at which the button goes down."},
    {"to", Kind::Object, required, "The target at which it goes up."},
    {"button", Kind::Text, optional, "left without."},
    {"moves", Kind::Integer, optional, "In so many moves, 12 without."},
    {"duration", Kind::Number, optional, "Milliseconds that the way takes, 200 without."},
};
constexpr Parameter thePage{"page", Kind::Integer, optional,
                            "The handle of the web view; not needed where there is one."};
constexpr Parameter pageOnly[] = {thePage};
constexpr Parameter pageEvaluate[] = {
    thePage, {"script", Kind::Text, required, "An expression of JavaScript."}};
constexpr Parameter pageFind[] = {
    thePage,
    {"css", Kind::Text, optional, "A CSS selector."},
    {"xpath", Kind::Text, optional, "An XPath expression."},
    {"text", Kind::Text, optional, "The text that it is known by, all of it."},
    {"textContains", Kind::Text, optional, "A part of that text, in any case."},
};
constexpr Parameter waitFor[] = {
    {"conditions", Kind::List, required, "1 to 100 conditions that must hold at the same moment."}};
constexpr Parameter waitRest[] = {
    {"quiet", Kind::Number, optional, "Milliseconds without anything handled, 100 without."}};
constexpr Parameter cancelRow[] = {{"request", Kind::Any, required, "The id of the request."}};

const std::vector<Method>& table() {
  static const auto* const rows = new std::vector<Method>{
      {"app.info",
       "What program this is, and what can be asked of it.",
       {},
       "`protocol`, `version` (of the agent), `pid`, `program` (its file), `toolkit`, `screen` "
       "(`width`, `height`, `scale`), `hasInput` (whether there is a pointer and a keyboard), "
       "`observesRunLoop` (whether it is known when the main thread is busy), `methods`",
       Effect::Asks,
       app::info},
      {"app.costs",
       "What the program has cost since the channel opened.",
       {},
       "`busyMs` (of the main thread), `longestMs` (its longest stretch), `beganWith` (what that "
       "began with), `cpuMs` (of the process), `memoryBytes`; null for what is not known",
       Effect::Asks,
       app::costs},
      {"window.list",
       "The windows that are shown, popups among them.",
       {},
       "`windows`: descriptions, each with `screenRect`, `key` and `takesInput`",
       Effect::Asks,
       window::list},
      {"window.activate", "Makes a window the key window and brings it to the front.", windowOnly,
       "nothing", Effect::Acts, window::activate},
      {"window.resize", "Gives a window another size.", windowSize,
       "`width`, `height`: what came of it", Effect::Acts, window::resize},
      {"window.close", "Closes a window as a person does; the program may ask back.", windowOnly,
       "nothing", Effect::Acts, window::close},
      {"window.picture", "A picture of a window.", windowOnly,
       "`format` (`png`, or `jpeg` where the platform has no other), `data` (Base64), `width`, "
       "`height`, `scale`",
       Effect::Asks, window::picture},
      {"tree.get", "Everything that is shown, or what changed since a version of it.", treeGet,
       "`version`, `whole`, `elements` (descriptions, parents before children), `gone` (handles, "
       "unless `whole`), `pictures` (each with its `window`)",
       Effect::Asks, tree::get},
      {"element.find", "The elements that a selector fits, in all windows.", findRow(),
       "`elements`: descriptions", Effect::Asks, element::find},
      {"element.describe", "All that is known of an element.", elementOnly, "`description`",
       Effect::Asks, element::describe},
      {"element.picture", "A picture of an element.", elementOnly, "as `window.picture`",
       Effect::Asks, element::picture},
      {"element.click",
       "Clicks an element with the mouse, as a person does: in its window, brought into sight, at "
       "a "
       "point where it takes the press.",
       elementClick, "nothing", Effect::Acts, element::click},
      {"element.focus", "Gives the element the keyboard.", elementOnly, "nothing", Effect::Acts,
       element::focus},
      {"element.setText", "Replaces the text of a field or an editor in one go.", elementText,
       "nothing", Effect::Acts, element::setText},
      {"element.setValue", "Sets the value of a control.", elementValue, "nothing", Effect::Acts,
       element::setValue},
      {"element.setExpanded", "Opens or closes a node of a tree.", elementExpanded, "nothing",
       Effect::Acts, element::setExpanded},
      {"element.scrollIntoView", "Scrolls what is round an element until it is in sight.",
       elementOnly, "`visible`", Effect::Acts, element::scrollIntoView},
      {"element.scrollToText",
       "Brings the item of a list, a table or a tree with that text into sight, whether it has a "
       "cell yet or not.",
       elementText, "nothing", Effect::Acts, element::scrollToText},
      {"input.pointer", "Moves the mouse and its buttons.", inputPointer, "nothing", Effect::Acts,
       input::pointer},
      {"input.wheel", "Turns the wheel.", inputWheel, "nothing", Effect::Acts, input::wheel},
      {"input.keys", "Presses keys, with modifiers.", inputKeys, "nothing", Effect::Acts,
       input::keys},
      {"input.text", "Gives text to what has the focus, as an input method does.", inputText,
       "nothing", Effect::Acts, input::text},
      {"input.drag", "Drags from one place to another.", inputDrag, "nothing", Effect::Acts,
       input::drag},
      {"page.list",
       "The web views that are shown, with their pages.",
       {},
       "`pages`: each with `page` (its handle), `title`, `address`, `loading`",
       Effect::Asks,
       page::list},
      {"page.evaluate", "Evaluates a script in a page.", pageEvaluate, "`text`: its result as text",
       Effect::Acts, page::evaluate},
      {"page.find", "The elements of a page that fit, in its frames and shadow trees as well.",
       pageFind, "`elements`: descriptions", Effect::Asks, page::find},
      {"page.tree", "Everything that is shown of a page.", pageOnly, "`elements`: descriptions",
       Effect::Asks, page::tree},
      {"wait.for", "Waits until all conditions hold.", waitFor, "`waitedMs`", Effect::Waits,
       wait::forConditions},
      {"wait.rest", "Waits until the program has handled nothing for a while.", waitRest,
       "`waitedMs`", Effect::Waits, wait::rest},
      {"cancel",
       "Gives a request of this client up, which is then answered with `cancelled`. What it has "
       "done already stays done.",
       cancelRow, "`cancelled`: false when there is no such request any more", Effect::Asks,
       nullptr},
  };
  return *rows;
}

}  // namespace

std::span<const Method> methods() {
  return table();
}

const Method* methodNamed(std::string_view name) {
  const auto found = std::ranges::find(table(), name, &Method::name);
  return found == table().end() ? nullptr : &*found;
}

}  // namespace tarni::session
