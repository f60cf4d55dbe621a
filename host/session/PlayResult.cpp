#include "host/session/PlayResult.h"

namespace tarni::host {

const char* inWords(PlayResult result) {
  switch (result) {
    case PlayResult::Passed:
      return "passed";
    case PlayResult::Failed:
      return "failed";
    case PlayResult::Lost:
      return "connection lost";
    case PlayResult::NotPlayed:
      break;
  }
  return "not played";
}

}  // namespace tarni::host
