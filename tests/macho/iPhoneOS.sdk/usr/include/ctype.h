#pragma once
#include <_ctype.h>
