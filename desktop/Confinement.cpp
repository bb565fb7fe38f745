#include "desktop/Confinement.h"

#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace dinmala {
namespace {

void limit(__rlimit_resource what, rlim_t most) {
    const rlimit limits{most, most};
    setrlimit(what, &limits);
}

/// No rule allows anything, so all that is handled is denied.
void changeNoFile() {
    landlock_ruleset_attr handled{};
    handled.handled_access_fs =
        LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
        LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR |
        LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO |
        LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM;
    const auto rules = static_cast<int>(syscall(SYS_landlock_create_ruleset, &handled, sizeof handled, 0));
    if (rules < 0) return;  // a kernel without it
    syscall(SYS_landlock_restrict_self, rules, 0);
    close(rules);
}

}  // namespace

void confineProcess() {
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    changeNoFile();
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_CPU, 5);
#ifndef __SANITIZE_ADDRESS__  // which reserves terabytes
    limit(RLIMIT_AS, rlim_t{512} << 20);
#endif
}

}  // namespace dinmala
