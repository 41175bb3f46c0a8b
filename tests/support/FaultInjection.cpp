// The functions below have libc's names, each with the type that goes with it.
#undef _FILE_OFFSET_BITS

#include "support/FaultInjection.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <type_traits>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

using FaultInjection::Calls;
using FaultInjection::Kind;

FaultInjection::Fault fault;
int callsLeft = 0; ///< until the fault strikes; 0 when there is none
bool armed = false;
bool struck = false;
bool hasFlags = true;
bool hasLinks = true;

/// Does the work, a function of how much of it is to be done, as far as the fault allows.
template <class Work>
auto callPart(size_t size, std::invoke_result_t<Work, size_t> failure, Work work, Calls calls = Calls::Writing)
{
    if (calls != fault.calls)
        return work(size);
    const bool strikes = callsLeft > 0 && --callsLeft == 0;
    if (!strikes && !(struck && fault.kind == Kind::ErrorFromNowOn))
        return work(size);
    struck = true;
    if (fault.kind == Kind::Meanwhile) {
        fault.meanwhile();
        return work(size);
    }
    if (fault.kind == Kind::End)
        return work(0);
    if (fault.kind == Kind::Short)
        return work((size + 1) / 2);
    if (fault.kind == Kind::KillHalfway) {
        work((size + 1) / 2);
        ::kill(::getpid(), SIGKILL);
    }
    errno = fault.error;
    return failure;
}

/// A system call without a count.
template <class... Arguments>
int callWhole(long number, Arguments... arguments)
{
    const Calls calls = number == SYS_statx ? Calls::Reading : Calls::Writing;
    if (calls == fault.calls && callsLeft == 1 && (fault.kind == Kind::Short || fault.kind == Kind::End))
        ++callsLeft;
    // No power is cut here, so what is to reach the disk need not.
    const bool skip = armed && (number == SYS_fsync || number == SYS_fdatasync || number == SYS_syncfs);
    return callPart(
        0, -1, [=](size_t) { return skip ? 0 : static_cast<int>(::syscall(number, arguments...)); }, calls);
}

} // namespace

void FaultInjection::arm(int call, const Fault& next)
{
    fault = next;
    callsLeft = call;
    armed = true;
    struck = false;
}

bool FaultInjection::hasStruck()
{
    return struck;
}

void FaultInjection::limitMoves(bool flags, bool links)
{
    hasFlags = flags;
    hasLinks = links;
}

extern "C" {

ssize_t write(int file, const void* bytes, size_t size)
{
    const auto work = [=](size_t part) -> ssize_t { return ::syscall(SYS_write, file, bytes, part); };
    return file == STDOUT_FILENO || file == STDERR_FILENO ? work(size) : callPart(size, -1, work);
}

ssize_t pwrite(int file, const void* bytes, size_t size, off_t offset)
{
    return callPart(size, -1,
                    [=](size_t part) -> ssize_t { return ::syscall(SYS_pwrite64, file, bytes, part, offset); });
}

ssize_t copy_file_range(int from, off64_t* fromOffset, int to, off64_t* toOffset, size_t size, unsigned int flags)
{
    const auto work = [=](size_t part) -> ssize_t {
        return ::syscall(SYS_copy_file_range, from, fromOffset, to, toOffset, part, flags);
    };
    return callPart(size, -1, work, fault.calls);
}

ssize_t read(int file, void* bytes, size_t size)
{
    return callPart(
        size, -1, [=](size_t part) -> ssize_t { return ::syscall(SYS_read, file, bytes, part); }, Calls::Reading);
}

ssize_t pread(int file, void* bytes, size_t size, off_t offset)
{
    const auto work = [=](size_t part) -> ssize_t { return ::syscall(SYS_pread64, file, bytes, part, offset); };
    return callPart(size, -1, work, Calls::Reading);
}

int statx(int folder, const char* path, int flags, unsigned int mask, struct statx* status) noexcept
{
    return callWhole(SYS_statx, folder, path, flags, mask, status);
}

int ftruncate(int file, off_t length) noexcept
{
    return callWhole(SYS_ftruncate, file, length);
}

int fallocate(int file, int mode, off_t offset, off_t length)
{
    return callWhole(SYS_fallocate, file, mode, offset, length);
}

int fsync(int file)
{
    return callWhole(SYS_fsync, file);
}

int fdatasync(int file)
{
    return callWhole(SYS_fdatasync, file);
}

int rename(const char* from, const char* to) noexcept
{
    return callWhole(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0);
}

int syncfs(int file) noexcept
{
    return callWhole(SYS_syncfs, file);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept
{
    return callWhole(SYS_renameat2, fromFolder, from, toFolder, to, 0);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags) noexcept
{
    if (hasFlags || flags == 0)
        return callWhole(SYS_renameat2, fromFolder, from, toFolder, to, flags);
    errno = EINVAL;
    return -1;
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept
{
    if (hasLinks)
        return callWhole(SYS_linkat, fromFolder, from, toFolder, to, flags);
    errno = EPERM;
    return -1;
}

int unlink(const char* path) noexcept
{
    return callWhole(SYS_unlinkat, AT_FDCWD, path, 0);
}

size_t fwrite(const void* bytes, size_t size, size_t count, FILE* file)
{
    static const auto next = reinterpret_cast<decltype(&fwrite)>(::dlsym(RTLD_NEXT, "fwrite"));
    const auto work = [=](size_t part) { return next(bytes, size, part, file); };
    return file == stdout || file == stderr ? work(count) : callPart(count, 0, work);
}

ssize_t pread64(int file, void* bytes, size_t size, off64_t offset)
{
    return pread(file, bytes, size, offset);
}

ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset)
{
    return pwrite(file, bytes, size, offset);
}

int ftruncate64(int file, off64_t length) noexcept __attribute__((alias("ftruncate")));
int fallocate64(int file, int mode, off64_t offset, off64_t length) __attribute__((alias("fallocate")));
}
