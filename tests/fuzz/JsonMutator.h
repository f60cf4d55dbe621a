// JsonMutator: changes inputs of one JSON text a line as JSON, with libFuzzer's own changes of
// bytes in between: values, keys, kinds, whole lines. What it puts in are lines of the fuzzer's
// seeds, what else it is taught, and what is odd anywhere.
#pragma once

#include <nlohmann/json.hpp>

namespace tarni::test {

// Another line to put in, whole or in parts; called before the first input.
void teach(nlohmann::ordered_json line);

}  // namespace tarni::test
