// dinmala-fetch ADDRESS: writes the body that an HTTP address answers; exit 1 without one.
#include <cstdio>
#include <cstdlib>

#include "desktop/Confinement.h"
#include "desktop/CurlFetch.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: dinmala-fetch ADDRESS\n", stderr);
        return 2;
    }
    dinmala::confineProcess();
    const auto body = dinmala::httpGet(argv[1]);
    const bool written = body && std::fwrite(body->data(), 1, body->size(), stdout) == body->size();
    const bool flushed = std::fflush(stdout) == 0;
    std::_Exit(written && flushed ? EXIT_SUCCESS : EXIT_FAILURE);  // a look-up may still be under way
}
