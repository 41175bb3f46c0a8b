#include "tagengine/PosixFile.h"

#include <algorithm>
#include <cerrno>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

bool FileDescriptor::close()
{
    return !isOpen() || ::close(std::exchange(descriptor_, -1)) == 0;
}

namespace PosixFile {

namespace {

constexpr std::int64_t copyBlock = 1 << 20;

/// Lets the disk write a full block while the next one is copied; the flush at the end reports what went wrong.
void startWriting(int descriptor, std::int64_t offset, std::int64_t length)
{
    if (length == copyBlock)
        ::sync_file_range(descriptor, offset, length, SYNC_FILE_RANGE_WRITE);
}

bool copyThroughMemory(int from, std::int64_t fromOffset, int to, std::int64_t toOffset, std::int64_t length)
{
    std::vector<char> block(static_cast<std::size_t>(std::min(length, copyBlock)));
    for (std::int64_t done = 0; done < length;) {
        const auto wanted = static_cast<std::size_t>(std::min(length - done, copyBlock));
        const std::int64_t count = readAt(from, fromOffset + done, block.data(), wanted);
        if (count == 0)
            errno = EIO;
        if (count <= 0 || !writeAt(to, toOffset + done, block.data(), static_cast<std::size_t>(count)))
            return false;
        startWriting(to, toOffset + done, count);
        done += count;
    }
    return true;
}

} // namespace

std::int64_t readAt(int descriptor, std::int64_t offset, char* into, std::size_t length)
{
    std::size_t done = 0;
    while (done < length) {
        const ssize_t count =
            ::pread(descriptor, into + done, length - done, offset + static_cast<std::int64_t>(done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return -1;
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return static_cast<std::int64_t>(done);
}

bool writeAt(int descriptor, std::int64_t offset, const char* bytes, std::size_t length)
{
    std::size_t done = 0;
    while (done < length) {
        const ssize_t count =
            ::pwrite(descriptor, bytes + done, length - done, offset + static_cast<std::int64_t>(done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count == 0)
            errno = ENOSPC;
        if (count <= 0)
            return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

bool copy(int from, std::int64_t fromOffset, int to, std::int64_t toOffset, std::int64_t length)
{
    std::int64_t done = 0;
    while (done < length) {
        off_t source = fromOffset + done;
        off_t target = toOffset + done;
        const auto wanted = static_cast<std::size_t>(std::min(length - done, copyBlock));
        const ssize_t count = ::copy_file_range(from, &source, to, &target, wanted, 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 && (errno == ENOSPC || errno == EDQUOT || errno == EIO))
            return false;
        // Not between these files, or not on this system.
        if (count <= 0)
            return copyThroughMemory(from, fromOffset + done, to, toOffset + done, length - done);
        startWriting(to, toOffset + done, count);
        done += count;
    }
    return true;
}

bool syncFolder(const QByteArray& folder)
{
    const FileDescriptor descriptor(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // A folder may be such that one can write into it and not read it.
    return descriptor.isOpen() ? ::fsync(descriptor.get()) == 0 || errno == EINVAL : errno == EACCES;
}

bool flush(int descriptor)
{
    const int second = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    return second >= 0 && ::close(second) == 0;
}

} // namespace PosixFile
