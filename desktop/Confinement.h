/// A process that takes from itself what it does not need.
#pragma once

namespace dinmala {

/// For a helper that talks to strangers: from here on it gains no rights, starts no other program and
/// writes, makes and removes no file (where the kernel has Landlock, 5.13 and later), holds at most 512 MB of address
/// space and uses at most five seconds of the processor. What it has open stays open.
void confineProcess();

}  // namespace dinmala
