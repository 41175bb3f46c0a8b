#pragma once

#include <functional>

/// Makes calls that change or read files fail in this process. They are the test program's own, which come before
/// libc's: write, pwrite, copy_file_range, ftruncate, fallocate, fsync, fdatasync, syncfs, rename, renameat, renameat2,
/// linkat, unlink and fwrite; read, pread, copy_file_range and statx.
namespace FaultInjection {

enum class Calls { Writing, Reading };

enum class Kind {
    Error,          ///< the call does nothing and fails
    ErrorFromNowOn, ///< and so do all later ones
    Short,          ///< the call does half of its work and says so
    End,            ///< the call does nothing and says so, as at the end of a file
    Meanwhile,      ///< something happens before the call, which does its work
    KillHalfway     ///< the process is killed when half of the work is done
};

struct Fault {
    Kind kind;
    int error = 0;
    Calls calls = Calls::Writing;
    std::function<void()> meanwhile = {};
};

/// Strikes at the given call, counted from 1 and from now.
void arm(int call, const Fault& fault);
/// Whether the call has been reached.
bool hasStruck();

/// Whether the file system can rename with flags and give a file a second name. At first it can both.
void limitMoves(bool flags, bool links);

} // namespace FaultInjection
