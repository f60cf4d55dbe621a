// Subcommands: the table of what `tarni` can do. A row declares its options and what is to be done
// with them, in a file of commands/ that bears its name or that of its kind (Query, Swipe).
#pragma once

#include <span>

namespace CLI {
class App;
}

namespace tarni::host {

class Invocation;

struct Subcommand {
  const char* name;
  const char* summary;
  void (*declare)(CLI::App& parser, Invocation& invocation);
  bool inScript = true;  // may stand in a line of `tarni do`
};

std::span<const Subcommand> subcommands();

// Which way a command goes, for the foot of its help.
constexpr const char* kNeedsSession = "What is marked * takes the session channel.";
constexpr const char* kSessionOnly = "Takes the session channel.";
constexpr const char* kByPortOnly =
    "Goes over the playback port, which ends recording: identifiers are those of\n"
    "`tarni --port 9898 find`.";

void declareAttach(CLI::App& parser, Invocation& invocation);
void declareAwait(CLI::App& parser, Invocation& invocation);
void declareCall(CLI::App& parser, Invocation& invocation);
void declareClick(CLI::App& parser, Invocation& invocation);
void declareCollapse(CLI::App& parser, Invocation& invocation);
void declareCosts(CLI::App& parser, Invocation& invocation);
void declareDescribe(CLI::App& parser, Invocation& invocation);
void declareDo(CLI::App& parser, Invocation& invocation);
void declareDrag(CLI::App& parser, Invocation& invocation);
void declareExport(CLI::App& parser, Invocation& invocation);
void declareEditable(CLI::App& parser, Invocation& invocation);
void declareExpand(CLI::App& parser, Invocation& invocation);
void declareFind(CLI::App& parser, Invocation& invocation);
void declareFocus(CLI::App& parser, Invocation& invocation);
void declareHighlight(CLI::App& parser, Invocation& invocation);
void declareHover(CLI::App& parser, Invocation& invocation);
void declareInspect(CLI::App& parser, Invocation& invocation);
void declareList(CLI::App& parser, Invocation& invocation);
void declarePlay(CLI::App& parser, Invocation& invocation);
void declarePress(CLI::App& parser, Invocation& invocation);
void declareRecord(CLI::App& parser, Invocation& invocation);
void declareReference(CLI::App& parser, Invocation& invocation);
void declareRun(CLI::App& parser, Invocation& invocation);
void declareScripts(CLI::App& parser, Invocation& invocation);
void declareScroll(CLI::App& parser, Invocation& invocation);
void declareSend(CLI::App& parser, Invocation& invocation);
void declareSet(CLI::App& parser, Invocation& invocation);
void declareSnapshot(CLI::App& parser, Invocation& invocation);
void declareSpy(CLI::App& parser, Invocation& invocation);
void declareSwipe(CLI::App& parser, Invocation& invocation);
void declareSwipeReset(CLI::App& parser, Invocation& invocation);
void declareSwipeTo(CLI::App& parser, Invocation& invocation);
void declareTree(CLI::App& parser, Invocation& invocation);
void declareType(CLI::App& parser, Invocation& invocation);
void declareWait(CLI::App& parser, Invocation& invocation);
void declareWebDriver(CLI::App& parser, Invocation& invocation);
void declareGrid(CLI::App& parser, Invocation& invocation);
void declareWindows(CLI::App& parser, Invocation& invocation);

// All in commands/Query.cpp.
void declareDisplayed(CLI::App& parser, Invocation& invocation);
void declareEnabled(CLI::App& parser, Invocation& invocation);
void declareHeight(CLI::App& parser, Invocation& invocation);
void declareSelected(CLI::App& parser, Invocation& invocation);
void declareText(CLI::App& parser, Invocation& invocation);
void declareWidth(CLI::App& parser, Invocation& invocation);

}  // namespace tarni::host
