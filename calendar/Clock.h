/// Where programs of 1.0 found the clock; it lives in base/.
#pragma once

#include "base/Clock.h"  // IWYU pragma: export
