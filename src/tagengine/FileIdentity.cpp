#include "tagengine/FileIdentity.h"

#include <algorithm>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace {

/// @param time a timespec or its like.
template <class Time>
std::int64_t nanoseconds(const Time& time)
{
    constexpr std::int64_t perSecond = 1'000'000'000;
    return time.tv_sec * perSecond + time.tv_nsec;
}

FileIdentity identify(int descriptor, const char* path, int flags)
{
    struct statx status {};
    FileIdentity identity;
    if (::statx(descriptor, path, flags, STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
        return identity;
    identity.device = makedev(status.stx_dev_major, status.stx_dev_minor);
    identity.inode = status.stx_ino;
    identity.birth = status.stx_mask & STATX_BTIME ? nanoseconds(status.stx_btime) : 0;
    identity.size = static_cast<std::int64_t>(status.stx_size);
    identity.modified = nanoseconds(status.stx_mtime);
    identity.changed = nanoseconds(status.stx_ctime);
    identity.links = status.stx_nlink;
    identity.isRegular = S_ISREG(status.stx_mode);
    return identity;
}

} // namespace

bool FileIdentity::isSameFile(const FileIdentity& other) const
{
    if (inode == 0 || inode != other.inode)
        return false;
    return birth != 0 && other.birth != 0 ? birth == other.birth : device == other.device;
}

bool FileIdentity::isUnchanged(const FileIdentity& other) const
{
    return isSameFile(other) && size == other.size && modified == other.modified;
}

bool FileIdentity::isSettled() const
{
    struct timespec now {};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return nanoseconds(now) > std::max(modified, changed);
}

FileIdentity FileIdentity::ofDescriptor(int descriptor)
{
    return identify(descriptor, "", AT_EMPTY_PATH);
}

FileIdentity FileIdentity::ofPath(const char* path)
{
    return identify(AT_FDCWD, path, 0);
}
