#include "host/cli/CommandLine.h"

int main(int argc, char** argv) {
  return tarni::host::runTool(argc, argv);
}
