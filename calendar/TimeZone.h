/// Where programs of 1.0 found the zones; they live in base/.
#pragma once

#include "base/TimeZone.h"  // IWYU pragma: export
