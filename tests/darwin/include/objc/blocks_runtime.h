/* Where Foundation looks for blocks on a runtime that has none of its own. */
#pragma once

#include <Block.h>
