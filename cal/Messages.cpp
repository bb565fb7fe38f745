#include "cal/Messages.h"

#include <cstdio>

namespace dinmala::cal {

void complain(const std::string& message) { std::fprintf(stderr, "dinmala-cal: %s\n", message.c_str()); }

}  // namespace dinmala::cal
