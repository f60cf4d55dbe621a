#include <algorithm>
#include <vector>

#include "agent/session/methods/Handlers.h"
#include "agent/session/protocol/Method.h"
#include "agent/session/screen/Selector.h"

namespace tarni::session {
namespace {

using Row = std::vector<Parameter>;

constexpr Parameter kTheElement{"element", Kind::Integer, kRequired, "Its handle."};
constexpr Parameter kTheWindow{"window", Kind::Integer, kOptional,
                               "Its handle, or that of an element in it; the key window without."};

// Some rows are longer by the parameters of a selector.
const Row& findRow() {
  static const auto* const row = [] {
    auto* const made = new Row(Criteria::parameters().begin(), Criteria::parameters().end());
    made->push_back({"all", Kind::Flag, kOptional,
                     "False for the first alone, and `no such element` when there is none. True "
                     "without."});
    made->push_back({"limit", Kind::Integer, kOptional, "At most so many."});
    return made;
  }();
  return *row;
}

constexpr Parameter kTreeGet[] = {
    {"since", Kind::Integer, kOptional,
     "The version that the client knows: only what changed since is told. Without it, or when it "
     "is not known any more what changed, the whole tree."},
    {"picture", Kind::Flag, kOptional, "With a picture of each window, of the same moment."},
};
constexpr Parameter kElementOnly[] = {kTheElement};
constexpr Parameter kElementClick[] = {
    kTheElement,
    {"button", Kind::Text, kOptional, "left (the usual), right, middle, back or forward."},
    {"count", Kind::Integer, kOptional, "1 to 3; 2 for a double click."},
    {"modifiers", Kind::Text, kOptional, "Keys that are down meanwhile: `Control+Shift`."},
    {"x", Kind::Number, kOptional,
     "With `y`: where, from its upper left corner, unless something else takes the press there."},
    {"y", Kind::Number, kOptional, "The same."},
};
constexpr Parameter kElementText[] = {kTheElement, {"text", Kind::Text, kRequired, "The text."}};
constexpr Parameter kElementValue[] = {
    kTheElement,
    {"value", Kind::Any, kRequired,
     "True or false for a switch; the text to choose or the number for a combo box, a spin box, a "
     "slider, a tab bar; the text of a text field; what a cell is to hold."},
    {"choice", Kind::Integer, kOptional,
     "Of a value from a list: its place there, from 0, which tells it from others of that text."},
    {"orInPlace", Kind::Flag, kOptional,
     "True to take what stands in that place when nothing in the list has the text."}};
constexpr Parameter kElementExpanded[] = {
    kTheElement, {"expanded", Kind::Flag, kRequired, "Whether what is below it is shown."}};
constexpr Parameter kWindowOnly[] = {kTheWindow};
constexpr Parameter kWindowPicture[] = {
    kTheWindow,
    {"blurSecrets", Kind::Flag, kOptional,
     "Whether its secure fields are blurred, which show how long a text they hold."}};
constexpr Parameter kWindowSize[] = {
    kTheWindow,
    {"width", Kind::Number, kRequired, "In points."},
    {"height", Kind::Number, kRequired, "In points."},
};
constexpr Parameter kPerson{"person", Kind::Flag, kOptional,
                            "True when a person does it by means of the client: `record.start` "
                            "tells of it, where the platform tells these apart."};
constexpr Parameter kInputPointer[] = {{"steps", Kind::List, kRequired,
                                        "At most 10,000, in their order: `{\"move\": TARGET}`, "
                                        "`{\"down\": BUTTON}`, `{\"up\": BUTTON}`, "
                                        "`{\"pause\": MILLISECONDS}`."},
                                       kPerson};
constexpr Parameter kInputTouch[] = {
    {"steps", Kind::List, kRequired,
     "At most 10,000, in their order: `{\"down\": FINGER}`, `{\"move\": FINGER}`, `{\"up\": "
     "FINGER}`, `{\"pause\": "
     "MILLISECONDS}`. A finger is a target with its number, `{\"finger\": 1, \"x\": 30, \"y\": "
     "40}`, "
     "or a list of them that do so at the same moment; where it goes up needs no target."}};
constexpr Parameter kInputWheel[] = {
    {"at", Kind::Object, kOptional, "The target to turn it over; where the pointer is without."},
    {"right", Kind::Number, kOptional, "Notches."},
    {"down", Kind::Number, kOptional, "Notches."},
    kPerson,
};
constexpr Parameter kInputKeys[] = {
    {"steps", Kind::List, kRequired,
     "At most 10,000, in their order: `\"Control+a\"` for keys that go down and up together, "
     "`{\"down\": KEY}`, "
     "`{\"up\": KEY}`, `{\"pause\": MILLISECONDS}`. Keys are called as in the W3C's "
     "`KeyboardEvent.key`: `Enter`, `F2`, `ArrowLeft`, `Shift`, `a`, `Ä`. Names that people use "
     "besides are known: `ctrl-a`, `Return`, `Esc`, `Left`, `Space`, `comma`. A dead key has none: "
     "the "
     "letter that it makes of the next key, as `é`, is a key of its own."},
    {"element", Kind::Integer, kOptional, "The element that gets the focus first."},
    kPerson,
};
constexpr Parameter kInputText[] = {
    {"text", Kind::Text, kRequired, "In any script."},
    {"element", Kind::Integer, kOptional, "The element that gets the focus first."},
    kPerson,
};
constexpr Parameter kInputDrag[] = {
    {"from", Kind::Object, kRequired, "The target at which the button goes down."},
    {"to", Kind::Object, kRequired, "The target at which it goes up."},
    {"button", Kind::Text, kOptional, "left without."},
    {"moves", Kind::Integer, kOptional, "In so many moves, 2 to 1000, 12 without."},
    {"duration", Kind::Number, kOptional, "Milliseconds that the way takes, 200 without."},
    kPerson,
};
constexpr Parameter kRecordStart[] = {
    {"checkKey", Kind::Text, kOptional,
     "A key, `Control+F12` say, that adds a check of what the pointer rests on, and is no act "
     "itself. The program gets it as well. There is one for all clients: that of the latest who "
     "named one."}};
constexpr Parameter kThePage{"page", Kind::Integer, kOptional,
                             "The handle of the web view; not needed where there is one."};
constexpr Parameter kPageOnly[] = {kThePage};
constexpr Parameter kPageEvaluate[] = {
    kThePage, {"script", Kind::Text, kRequired, "An expression of JavaScript."}};
constexpr Parameter kPageFind[] = {
    kThePage,
    {"css", Kind::Text, kOptional, "A CSS selector. This, or one of the next three."},
    {"xpath", Kind::Text, kOptional, "An XPath expression, which does not look into shadow trees."},
    {"text", Kind::Text, kOptional, "The text that it is known by, all of it."},
    {"textContains", Kind::Text, kOptional, "A part of that text, in any case."},
};
constexpr Parameter kWaitFor[] = {{"conditions", Kind::List, kRequired,
                                   "1 to 100 conditions that must hold at the same moment."}};
constexpr Parameter kWaitRest[] = {
    {"quiet", Kind::Number, kOptional, "Milliseconds without anything handled, 100 without."}};
constexpr Parameter kCancelRow[] = {{"request", Kind::Any, kRequired, "The id of the request."}};

const std::vector<Method>& table() {
  static const auto* const rows = new std::vector<Method>{
      {"app.info",
       "What program this is, and what can be asked of it.",
       {},
       "`protocol`, `version` (of the agent), `pid`, `program` (its file), `toolkit`, `screen` "
       "(`width`, `height`, `scale`), `hasInput` (whether there is a pointer and a keyboard), "
       "`methods`, `lacking` (those of them that this platform has no means for)",
       Effect::Asks,
       app::info},
      {"app.costs",
       "What the program has cost since the channel opened; the processor's time since it began.",
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
      {"window.activate", "Makes a window the key window and brings it to the front.", kWindowOnly,
       "nothing", Effect::Acts, window::activate},
      {"window.resize", "Gives a window another size.", kWindowSize,
       "`width`, `height`: what came of it", Effect::Acts, window::resize, Needs::Windows},
      {"window.close", "Closes a window as a person does; the program may ask back.", kWindowOnly,
       "nothing", Effect::Acts, window::close, Needs::Windows},
      {"window.picture", "A picture of a window.", kWindowPicture,
       "`format` (`png`, or `jpeg` where the platform has no other), `data` (Base64), `width`, "
       "`height`, `scale`",
       Effect::Asks, window::picture},
      {"tree.get", "Everything that is shown, or what changed since a version of it.", kTreeGet,
       "`version`, `whole`, `elements` (descriptions, parents before children), `gone` (handles, "
       "unless `whole`), `pictures` (each with its `window`)",
       Effect::Asks, tree::get},
      {"element.find",
       "The elements that a selector fits, in all windows: first in those that no modal one keeps "
       "the person from.",
       findRow(), "`elements`: descriptions", Effect::Asks, element::find},
      {"element.describe", "All that is known of an element.", kElementOnly, "`description`",
       Effect::Asks, element::describe},
      {"element.locators",
       "The ways to find an element again, each tried at this moment, as [steps](#steps) have "
       "them.",
       kElementOnly, "`locators`", Effect::Asks, element::locators},
      {"element.picture", "A picture of an element.", kElementOnly, "as `window.picture`",
       Effect::Asks, element::picture},
      {"element.click",
       "Clicks an element with the mouse, as a person does: in its window, brought into sight, at "
       "a point where it takes the press. Where there is no mouse a finger taps it, which has no "
       "other button and no modifiers. An element of a page is clicked by a script, whatever lies "
       "over "
       "it, unless a parameter asks for more than a plain click.",
       kElementClick, "nothing", Effect::Acts, element::click},
      {"element.focus", "Gives the element the keyboard.", kElementOnly, "nothing", Effect::Acts,
       element::focus},
      {"element.setText", "Replaces the text of a field or an editor in one go.", kElementText,
       "nothing", Effect::Acts, element::setText},
      {"element.setValue", "Sets the value of a control or of a cell that a person can edit.",
       kElementValue, "`taken`: the text of what was taken in its place; otherwise nothing",
       Effect::Acts, element::setValue},
      {"element.setExpanded", "Opens or closes a node of a tree.", kElementExpanded, "nothing",
       Effect::Acts, element::setExpanded},
      {"element.scrollIntoView", "Scrolls what is round an element until it is in sight.",
       kElementOnly, "`visible`", Effect::Acts, element::scrollIntoView},
      {"element.scrollToText",
       "Brings the item of a list, a table or a tree with that text into sight, whether it has a "
       "cell yet or not.",
       kElementText, "nothing", Effect::Acts, element::scrollToText},
      {"input.pointer",
       "Moves the mouse and its buttons. Where there is no mouse the left button is a finger that "
       "is down as long as it.",
       kInputPointer, "nothing", Effect::Acts, input::pointer},
      {"input.touch",
       "Moves fingers on the screen. They stay in the windows in which they went down.",
       kInputTouch, "nothing", Effect::Acts, input::touch},
      {"input.wheel", "Turns the wheel.", kInputWheel, "nothing", Effect::Acts, input::wheel,
       Needs::Mouse},
      {"input.keys",
       "Presses keys, with modifiers. Where there is a keyboard on the screen alone: characters, "
       "`Backspace`, `Enter` and `Control+a`.",
       kInputKeys, "nothing", Effect::Acts, input::keys},
      {"input.text", "Gives text to what has the focus, as an input method does.", kInputText,
       "nothing", Effect::Acts, input::text},
      {"input.drag", "Drags from one place to another.", kInputDrag, "nothing", Effect::Acts,
       input::drag},
      {"page.list",
       "The web views that are shown, with their pages.",
       {},
       "`pages`: each with `page` (its handle), `title`, `address` (both empty while it is one of "
       "what "
       "follows), `loading`, `silent` (busy with a script, or kept by a dialog that it opened)",
       Effect::Asks,
       page::list},
      {"page.evaluate", "Evaluates a script in a page.", kPageEvaluate,
       "`text`: its result as text", Effect::Acts, page::evaluate},
      {"page.find",
       "The elements of a page that fit, in its frames of the same origin and shadow trees as "
       "well.",
       kPageFind, "`elements`: descriptions", Effect::Asks, page::find},
      {"page.tree", "Everything that is shown of a page.", kPageOnly, "`elements`: descriptions",
       Effect::Asks, page::tree},
      {"screen.watch",
       "Tells this client from now on when something new is painted: a notification "
       "`screen.painted` with `windows`, the handles of those that were painted since the one "
       "before, and `opened`, whether a window was opened or closed; at most one in 100 ms. "
       "Pictures that clients ask for do not count, but where a renderer paints to give one (that "
       "of Qt 5 without graphics hardware).",
       {},
       "nothing",
       Effect::Asks,
       screen::watch},
      {"screen.unwatch", "No more of that.", {}, "nothing", Effect::Asks, screen::unwatch},
      {"record.start",
       "Tells this client from now on what a person does: each act is a step, and a notification "
       "`record.step` with it as its parameters.",
       kRecordStart, "nothing", Effect::Asks, record::start},
      {"record.stop",
       "No more of that. Every step has been told before the answer.",
       {},
       "nothing",
       Effect::Asks,
       record::stop},
      {"wait.for", "Waits until all conditions hold.", kWaitFor, "`waitedMs`", Effect::Waits,
       wait::forConditions},
      {"wait.rest", "Waits until the program has handled nothing for a while.", kWaitRest,
       "`waitedMs`", Effect::Waits, wait::rest},
      {"cancel",
       "Gives a request of this client up, which is then answered with `cancelled`. What it has "
       "done already stays done.",
       kCancelRow, "`cancelled`: false when there is no such request any more", Effect::Asks,
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
