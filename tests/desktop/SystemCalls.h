/// The C library's file calls of a test program, which stand in place of the library's own: each can be made to
/// fail, and what they do to the disk is noted.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace dinmala::calls {

/// Fails calls of this program for as long as it lives.
class Failing {
public:
    /// Of all calls the `nth` from now, 1 first, fails with `error`.
    Failing(int nth, int error);
    /// All calls of this name fail with `error`.
    Failing(const char* name, int error);
    ~Failing();
    Failing(const Failing&) = delete;
    Failing& operator=(const Failing&) = delete;

    /// Whether a call has failed yet.
    [[nodiscard]] static bool happened() { return !call().empty(); }
    /// The name of the call that has failed last; empty for none.
    [[nodiscard]] static const std::string& call();
};

/// What a program did to the disk, in order. Files are numbered as they are made or first written to.
struct Step {
    enum class Kind { create, write, sync, move, remove, syncFolder } kind;
    int file = 0;           ///< of create, write, sync
    std::string name;       ///< of create, move (from), remove; of syncFolder the folder
    std::string otherName;  ///< of move: to
    std::string text;       ///< of write
};

/// Notes the steps of this program for as long as it lives.
class Recording {
public:
    Recording();
    ~Recording();
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    [[nodiscard]] static std::vector<Step>& steps();
};

/// Of the allocations by `new` the `nth` from now throws std::bad_alloc, once. 0 ends that.
void failAllocation(int nth);
[[nodiscard]] bool allocationFailed();

}  // namespace dinmala::calls
