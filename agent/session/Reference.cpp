#include <sstream>

#include "agent/session/Client.h"
#include "agent/session/protocol/Method.h"
#include "agent/session/recording/Steps.h"
#include "agent/session/screen/Description.h"

namespace tarni::session {
namespace {

constexpr std::string_view kIntroduction =
    R"(# The session channel

<!-- Made from the table of methods by `tarni-session-reference`; a test compares. -->

The second way into a program, beside the two fixed ports ([protocol.md](protocol.md)), which it leaves
as they are: any number of clients at once, elements that stay, a person's mouse and keyboard, waits
that are woken. Nothing of it ends recording, and nothing that it does is recorded as a person's act,
unless it says that a person does it.

## Where

A Unix socket of the path that the program finds in `TARNI_SESSION`; `tarni run` puts it there
(`$XDG_RUNTIME_DIR/tarni/PID.session`, or in `/tmp/tarni-UID`). The agent makes it, for this user
and root: the folder must be of mode 0700, the socket has mode 0600, and another user's connection is
closed. It takes the variable out of the environment of the program's children. A path is reached
across network namespaces, so an isolated program needs no other way. `tcp:127.0.0.1:PORT` instead of
a path is a port of this machine, without any lock, and therefore in debug builds of the agent alone
and in the framework for iOS, which is a part of debug builds: on devices the application's `Info.plist`
may say it as `TarniSession`. Without the variable there is no channel.

## What goes over it

[JSON-RPC 2.0](https://www.jsonrpc.org/specification), UTF-8, one message a line (no arrays of
messages); parameters have names. Requests may overlap; answers come as they are ready. A request
without `id` is not answered. A name that a method, a selector, a condition or a target does not have
is refused, with those that it has. The connection stays open until the last answer is read.

A line is at most 16 MiB long, holds at most 250,000 values and nests at most 64 levels. Of one client
256 requests are on their way at a time, the ones behind them wait in the socket. A client that reads
nothing for 10 s while answers wait for it, or for which more than 256 MiB wait, is closed. When a client
goes, its requests end, and the buttons and keys that it holds down are let go.

Requests that look at views or act on them run on the program's main thread, one after the other, and
between the commands of the fixed ports; one that pauses or waits lets others pass. A dialog that a click
opened keeps nobody from being answered. While the main thread is busy answers come when it is free,
or with `timeout` when the request says for how long to wait.

**Elements** have handles: whole numbers that live as long as the element and are never given out
twice. Looking for others makes none void.

**Errors** have a name in `data.error`, those of WebDriver where it has one, and a sentence in
`message` that says what to do about it:

)";

constexpr std::string_view kExample = R"(
## Ten lines of Python

```python
import json, os, socket

channel = socket.socket(socket.AF_UNIX)
channel.connect(os.environ["TARNI_SESSION"])
lines = channel.makefile("rw")

def ask(method, **params):
    print(json.dumps({"jsonrpc": "2.0", "id": 1, "method": method, "params": params}), file=lines, flush=True)
    return json.loads(lines.readline())["result"]

button = ask("element.find", text="Log in", all=False)["elements"][0]
print(ask("element.click", element=button["element"])["costs"])
```
)";

constexpr std::string_view kShapes = R"(
## Targets

Where the pointer goes: `{"element": 12}`, its middle; `{"element": 12, "x": 3, "y": 4}`, from its
upper left corner; `{"window": 1, "x": 30, "y": 40}`, in points of that window; `{"x": 30, "y": 40}`,
of the key window.

## Conditions

Each says what it is about, `"element"` (a handle), `"find"` (an object with the members of a selector)
or `"window"` (a part of a title, in its case), and what must hold of it:

- `"is"`: `there` (the usual), `gone`, `visible`, `enabled`, `disabled`, `checked`, `unchecked` or
  `focused`; of a window `there` or `gone`. Of several elements that are found, one is enough.
- `"textIs"` or `"textContains"`: a text, in its case.
- `"count"`: how many are found.

`{"find": {"kind": "UILabel", "text": "Saved"}, "is": "visible"}`. The error `timeout` has them all in
`data.conditions`, with what is there instead: `holds`, of a window the titles of the `windows`, else `found` (how
many) and `elements` (the first of them). A page, which does not tell that it has changed, is asked every 100 ms.

## Costs

The answer of what acts has `costs`: `busyMs`, how long the main thread was busy; `longestMs`, its
longest stretch without a break, and `beganWith`, what that began with ("the request" for what the
request itself did); `cpuMs`, the processor time of the process; `memoryBytes`, `before` and `after`.

## Descriptions

)";

constexpr std::string_view kRecording = R"(
## Steps

What `record.start` has the client told of, in notifications `record.step`. One act of a person is one
step, however many events it takes: a press and its release wherever that is, a double click, a drag,
a text, the way down a menu. What came of an act belongs to it, and what it caused is no step. What
this channel or the fixed ports do is none either, but for input that says `person`.

)";

constexpr const char* typeOf(Kind kind) {
  switch (kind) {
    case Kind::Integer:
      return "integer";
    case Kind::Number:
      return "number";
    case Kind::Text:
      return "text";
    case Kind::Flag:
      return "boolean";
    case Kind::Object:
      return "object";
    case Kind::List:
      return "list";
    case Kind::Any:
      return "any";
  }
  return "";
}

void writeParameters(std::ostream& page, std::span<const Parameter> parameters) {
  for (const Parameter& parameter : parameters) {
    page << "- `" << parameter.name << "` (" << typeOf(parameter.kind)
         << (parameter.isRequired ? ", needed" : "") << "): " << parameter.description << '\n';
  }
}

void writeMethod(std::ostream& page, const Method& method) {
  page << "\n### " << method.name << "\n\n" << method.description << "\n\n";
  writeParameters(page, method.parameters);
  if (!method.parameters.empty()) page << '\n';
  page << "Answers " << method.result << (method.effect == Effect::Acts ? "; with `costs`" : "")
       << ".\n";
}

}  // namespace

std::string reference() {
  std::ostringstream page;
  page << kIntroduction << "| Error | Code |\n|---|---|\n";
  for (const ErrorKind& kind : errors::kAll) {
    page << "| " << kind.name << " | " << kind.code << " |\n";
  }
  page << kExample << kShapes << descriptionInWords() << kRecording << stepInWords()
       << "\n## Methods\n\nAll of them take:\n\n";
  writeParameters(page, commonParameters());
  for (const Method& method : methods()) writeMethod(page, method);
  return page.str();
}

}  // namespace tarni::session
