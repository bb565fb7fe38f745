/// A check that holds in every build.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace dinmala {

/// Ends the run, so that the fuzzer keeps the input.
inline void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "not so: %s\n", what);
    std::abort();
}

}  // namespace dinmala
