// PlayResult: what has come of a step that was to be played. Plain value, any thread.
#pragma once

namespace tarni::host {

enum class PlayResult {
  NotPlayed,
  Passed,
  Failed,
  Lost,  // the connection ended or the program gave no answer
};

// As a person reads it.
const char* inWords(PlayResult result);

}  // namespace tarni::host
