#pragma once

/// What the calls that put things on the disk do in this program, in place of libc's.
namespace Syncs {

enum class Mode {
    Real, ///< what they say
    None, ///< nothing, with success
    Slow  ///< 15 milliseconds each, as on a slow disk
};

void set(Mode mode);
/// How many there were since the mode was set.
int count();

} // namespace Syncs
