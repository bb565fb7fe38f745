#include "tests/desktop/SystemCalls.h"

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <map>
#include <new>

namespace dinmala::calls {

namespace {

int left = 0;                 // calls until one fails; 0 for none
const char* named = nullptr;  // or all of this name
int failure = 0;
std::string failed;  // the name of the one that did last

bool recording = false;
std::vector<Step> noted;
std::map<ino_t, int> numbers;  // of files
int lastNumber = 0;

int allocationsLeft = 0;
bool outOfMemory = false;

/// Whether this call is to fail; errno is set then.
bool fails(const char* name) {
    const bool hit = named != nullptr ? std::strcmp(named, name) == 0 : left > 0 && --left == 0;
    if (!hit) return false;
    failed = name;
    errno = failure;
    return true;
}

/// The library's own function in whose place ours stands.
template <typename Function>
Function* real(Function*, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

std::string nameOf(int fd) {
    std::array<char, 4096> name{};
    const ssize_t length = readlink(("/proc/self/fd/" + std::to_string(fd)).c_str(), name.data(), name.size());
    return {name.data(), static_cast<std::size_t>(length > 0 ? length : 0)};
}

/// A regular file's number; 0 for anything else.
int numberOf(int fd) {
    struct stat status {};
    if (fstat(fd, &status) != 0 || !S_ISREG(status.st_mode)) return 0;
    int& number = numbers[status.st_ino];
    if (number == 0) number = ++lastNumber;
    return number;
}

/// Notes a step without failing its own calls.
template <typename Note>
void note(Note&& step) {
    if (!recording) return;
    recording = false;
    const int error = errno;
    step();
    errno = error;
    recording = true;
}

void* allocate(std::size_t size) {
    if (allocationsLeft > 0 && --allocationsLeft == 0) {
        outOfMemory = true;
        throw std::bad_alloc{};
    }
    if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc{};
}

}  // namespace

Failing::Failing(int nth, int error) {
    left = nth;
    failure = error;
    failed.clear();
}

Failing::Failing(const char* name, int error) {
    named = name;
    failure = error;
    failed.clear();
}

Failing::~Failing() {
    left = 0;
    named = nullptr;
}

const std::string& Failing::call() { return failed; }

Recording::Recording() {
    noted.clear();
    recording = true;
}

Recording::~Recording() { recording = false; }

std::vector<Step>& Recording::steps() { return noted; }

void failAllocation(int nth) {
    allocationsLeft = nth;
    outOfMemory = false;
}

bool allocationFailed() { return outOfMemory; }

}  // namespace dinmala::calls

using dinmala::calls::fails;
using dinmala::calls::note;
using dinmala::calls::real;
using Kind = dinmala::calls::Step::Kind;

void* operator new(std::size_t size) { return dinmala::calls::allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

extern "C" {

int open(const char* path, int flags, ...) {
    if (fails("open")) return -1;
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return real(::open, "open")(path, flags, mode);
}

int mkostemp(char* path, int flags) {
    if (fails("mkostemp")) return -1;
    const int fd = real(::mkostemp, "mkostemp")(path, flags);
    note([&] {
        struct stat status {};
        if (fstat(fd, &status) == 0) dinmala::calls::numbers.erase(status.st_ino);  // the number of a file that is gone
        dinmala::calls::noted.push_back({Kind::create, dinmala::calls::numberOf(fd), path, {}, {}});
    });
    return fd;
}

ssize_t read(int fd, void* data, size_t size) { return fails("read") ? -1 : real(::read, "read")(fd, data, size); }

ssize_t write(int fd, const void* data, size_t size) {
    if (fails("write")) return -1;
    // In pieces, as a full disk or a signal may have it.
    const ssize_t written = real(::write, "write")(fd, data, size > 100 ? size / 2 : size);
    note([&] {
        const int file = dinmala::calls::numberOf(fd);
        if (file == 0 || written <= 0) return;
        dinmala::calls::noted.push_back(
            {Kind::write, file, {}, {}, {static_cast<const char*>(data), static_cast<std::size_t>(written)}});
    });
    return written;
}

int close(int fd) {
    const int result = real(::close, "close")(fd);
    return fails("close") ? -1 : result;
}

int fsync(int fd) {
    if (fails("fsync")) return -1;
    note([&] {
        const int file = dinmala::calls::numberOf(fd);
        dinmala::calls::noted.push_back(
            {file != 0 ? Kind::sync : Kind::syncFolder, file, dinmala::calls::nameOf(fd), {}, {}});
    });
    return 0;  // no power is cut here, and a disk takes its time
}

int fchmod(int fd, mode_t mode) noexcept { return fails("fchmod") ? -1 : real(::fchmod, "fchmod")(fd, mode); }

int rename(const char* from, const char* to) noexcept {
    if (fails("rename")) return -1;
    const int result = real(::rename, "rename")(from, to);
    if (result == 0) note([&] { dinmala::calls::noted.push_back({Kind::move, 0, from, to, {}}); });
    return result;
}

int renameat2(int a, const char* from, int b, const char* to, unsigned flags) noexcept {
    if (fails("renameat2")) return -1;
    const int result = real(::renameat2, "renameat2")(a, from, b, to, flags);
    if (result == 0) note([&] { dinmala::calls::noted.push_back({Kind::move, 0, from, to, {}}); });
    return result;
}

int unlink(const char* path) noexcept {
    if (fails("unlink")) return -1;
    note([&] { dinmala::calls::noted.push_back({Kind::remove, 0, path, {}, {}}); });
    return real(::unlink, "unlink")(path);
}

int mkdir(const char* path, mode_t mode) noexcept { return fails("mkdir") ? -1 : real(::mkdir, "mkdir")(path, mode); }

int stat(const char* path, struct stat* status) noexcept {
    return fails("stat") ? -1 : real(::stat, "stat")(path, status);
}

int lstat(const char* path, struct stat* status) noexcept {
    return fails("lstat") ? -1 : real(::lstat, "lstat")(path, status);
}

int fstat(int fd, struct stat* status) noexcept { return fails("fstat") ? -1 : real(::fstat, "fstat")(fd, status); }

ssize_t readlink(const char* path, char* text, size_t size) noexcept {
    return fails("readlink") ? -1 : real(::readlink, "readlink")(path, text, size);
}

DIR* opendir(const char* path) { return fails("opendir") ? nullptr : real(::opendir, "opendir")(path); }

struct dirent* readdir(DIR* folder) {
    return fails("readdir") ? nullptr : real(::readdir, "readdir")(folder);
}
}
