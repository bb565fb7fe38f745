/// What the command tells on standard error.
#pragma once

#include <cstdio>
#include <string>

namespace dinmala::cal {

inline void complain(const std::string& message) { std::fprintf(stderr, "dinmala-cal: %s\n", message.c_str()); }

}  // namespace dinmala::cal
