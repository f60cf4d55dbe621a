// tarni-session-reference: prints docs/session.md, the reference of the session channel.
#include <iostream>

#include "agent/session/protocol/Method.h"

int main() {
  std::cout << tarni::session::reference();
}
