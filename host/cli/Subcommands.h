// Subcommands: the table of what `tarni` can do; each row's work is in commands/, in the file that
// bears the row's name. A row declares its options and what is to be done with them.
#pragma once

#include <span>

namespace CLI {
class App;
}

namespace tarni::host {

class Session;

struct Subcommand {
  const char* name;
  const char* summary;
  void (*declare)(CLI::App& parser, Session& session);
  bool inScript = true;  // may stand in a line of `tarni do`
};

std::span<const Subcommand> subcommands();

void declareAttach(CLI::App& parser, Session& session);
void declareClick(CLI::App& parser, Session& session);
void declareDescribe(CLI::App& parser, Session& session);
void declareDo(CLI::App& parser, Session& session);
void declareEditable(CLI::App& parser, Session& session);
void declareFind(CLI::App& parser, Session& session);
void declareHighlight(CLI::App& parser, Session& session);
void declareList(CLI::App& parser, Session& session);
void declarePlay(CLI::App& parser, Session& session);
void declareRecord(CLI::App& parser, Session& session);
void declareReference(CLI::App& parser, Session& session);
void declareRun(CLI::App& parser, Session& session);
void declareScripts(CLI::App& parser, Session& session);
void declareSend(CLI::App& parser, Session& session);
void declareSnapshot(CLI::App& parser, Session& session);
void declareSpy(CLI::App& parser, Session& session);
void declareSwipe(CLI::App& parser, Session& session);
void declareSwipeReset(CLI::App& parser, Session& session);
void declareSwipeTo(CLI::App& parser, Session& session);
void declareTree(CLI::App& parser, Session& session);
void declareType(CLI::App& parser, Session& session);
void declareWait(CLI::App& parser, Session& session);

// All in commands/Query.cpp.
void declareDisplayed(CLI::App& parser, Session& session);
void declareEnabled(CLI::App& parser, Session& session);
void declareHeight(CLI::App& parser, Session& session);
void declareSelected(CLI::App& parser, Session& session);
void declareText(CLI::App& parser, Session& session);
void declareWidth(CLI::App& parser, Session& session);

}  // namespace tarni::host
