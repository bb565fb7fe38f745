/// Files in memory: every input writes some.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "fuzz/Require.h"
#include "tests/support/TemporaryFolder.h"

namespace dinmala {

/// What `work`, which reads the first of its descriptors, writes to the second.
inline std::string writtenBy(std::string_view input, const std::function<void(int, int)>& work) {
    const int in = memfd_create("in", 0), out = memfd_create("out", 0);
    require(write(in, input.data(), input.size()) == static_cast<ssize_t>(input.size()), "the input is there");
    lseek(in, 0, SEEK_SET);
    work(in, out);
    std::string text(static_cast<std::size_t>(lseek(out, 0, SEEK_CUR)), '\0');
    require(pread(out, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()), "the output is there");
    close(in);
    close(out);
    return text;
}

inline const TemporaryFolder& memoryFolder() {
    static const TemporaryFolder folder{std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp"};
    return folder;
}

}  // namespace dinmala
