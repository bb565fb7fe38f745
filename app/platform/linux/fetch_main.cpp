// dinmala-fetch ADDRESS: writes the body that an HTTP address answers; exit 1 without one.
#include <cstdio>
#include <cstdlib>

#include "app/platform/linux/CurlFetch.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: dinmala-fetch ADDRESS\n", stderr);
        return 2;
    }
    const auto body = dinmala::httpGet(argv[1]);
    if (!body || std::fwrite(body->data(), 1, body->size(), stdout) != body->size()) return EXIT_FAILURE;
    return std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
