// The functions below have libc's names, each with the type that goes with it.
#undef _FILE_OFFSET_BITS

#include "support/CallRecorder.h"

#include "support/ChildProcess.h"

#include <QDataStream>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <filesystem>

#include <linux/fs.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>

namespace {

using CallRecorder::Call;
using CallRecorder::FileId;

bool armed = false;
QByteArray root;
QByteArray closedFolder;
QList<Call> calls;
QMap<ino_t, FileId> madeHere;

QByteArray linkTarget(int descriptor)
{
    char target[4096];
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
    const ssize_t length = ::readlink(link.constData(), target, sizeof target);
    return length < 0 ? QByteArray() : QByteArray(target, length);
}

/// The path without relative parts; empty when it is not to be watched.
QByteArray watched(int folder, const char* path)
{
    if (!armed)
        return {};
    std::filesystem::path whole(path);
    if (whole.is_relative())
        whole = std::filesystem::path(folder == AT_FDCWD ? std::filesystem::current_path().string()
                                                         : linkTarget(folder).toStdString())
                / whole;
    const QByteArray normal = QByteArray::fromStdString(whole.lexically_normal().string());
    return normal.startsWith(root + '/') ? normal : QByteArray();
}

bool isWatched(int descriptor)
{
    return armed && (linkTarget(descriptor) + '/').startsWith(root + '/');
}

FileId idOf(ino_t inode)
{
    return madeHere.value(inode, inode);
}

FileId idOf(int descriptor)
{
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 ? idOf(status.st_ino) : 0;
}

/// @return 0 when there is nothing of that name.
FileId idOf(const QByteArray& path)
{
    struct stat status {};
    return !path.isEmpty() && ::lstat(path.constData(), &status) == 0 ? idOf(status.st_ino) : 0;
}

void noteNames(const QMap<QByteArray, FileId>& names)
{
    Call call{Call::Kind::Name, names};
    call.names.remove(QByteArray());
    if (!call.names.isEmpty())
        calls.append(call);
}

void noteMade(const QByteArray& path, bool isFolder)
{
    constexpr int countShift = 48;
    struct stat status {};
    ::lstat(path.constData(), &status);
    const FileId id = status.st_ino | FileId(calls.size() + 1) << countShift;
    madeHere[status.st_ino] = id;
    calls.append({Call::Kind::Name, {{path, id}}, id, isFolder});
}

void noteWrite(int file, off64_t offset, const void* bytes, ssize_t count)
{
    if (count > 0 && isWatched(file))
        calls.append(
            {Call::Kind::Write, {}, idOf(file), false, offset, QByteArray(static_cast<const char*>(bytes), count)});
}

int noteResize(int file, int result)
{
    struct stat status {};
    if (result == 0 && isWatched(file) && ::fstat(file, &status) == 0)
        calls.append({Call::Kind::Resize, {}, idOf(file), false, status.st_size});
    return result;
}

int noteSync(int file, bool isAll)
{
    if (isWatched(file))
        calls.append({Call::Kind::Sync, {}, isAll ? 0 : idOf(file)});
    return 0;
}

int openNoted(int folder, const char* name, int flags, mode_t mode)
{
    const QByteArray path = watched(folder, name);
    const bool isNew = !path.isEmpty() && idOf(path) == 0;
    if (isNew && (flags & O_CREAT) && path.startsWith(closedFolder + '/')) {
        errno = EACCES;
        return -1;
    }
    const int file = static_cast<int>(::syscall(SYS_openat, folder, name, flags, mode));
    if (file >= 0 && isNew)
        noteMade(path, false);
    else if (file >= 0 && !path.isEmpty() && (flags & O_TRUNC))
        noteResize(file, 0);
    return file;
}

int renameNoted(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags)
{
    const QByteArray oldPath = watched(fromFolder, from);
    const QByteArray newPath = watched(toFolder, to);
    const FileId moved = idOf(oldPath);
    const FileId other = idOf(newPath);
    const auto result = static_cast<int>(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
    // Renaming one name of a file to another of its names does nothing.
    if (result == 0 && moved != other)
        noteNames({{oldPath, (flags & RENAME_EXCHANGE) ? other : 0}, {newPath, moved}});
    return result;
}

mode_t modeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) ? va_arg(arguments, mode_t) : 0;
}

} // namespace

namespace CallRecorder {

static QDataStream& operator<<(QDataStream& stream, const Call& call)
{
    return stream << quint8(call.kind) << call.names << call.file << call.isFolder << call.offset << call.bytes;
}

static QDataStream& operator>>(QDataStream& stream, Call& call)
{
    quint8 kind = 0;
    stream >> kind >> call.names >> call.file >> call.isFolder >> call.offset >> call.bytes;
    call.kind = Call::Kind(kind);
    return stream;
}

} // namespace CallRecorder

CallRecorder::Recording CallRecorder::record(const QByteArray& folder, const std::function<int()>& work,
                                             const QByteArray& closed)
{
    QFile channel;
    if (!channel.open(::memfd_create("calls", MFD_CLOEXEC), QIODevice::ReadWrite, QFileDevice::AutoCloseHandle))
        qFatal("Can't make room for the calls");
    QDataStream stream(&channel);
    Recording recording{};
    recording.result = inChildProcess([&] {
        root = folder;
        closedFolder = closed.isEmpty() ? QByteArray("-") : closed;
        armed = true;
        const int result = work();
        armed = false;
        stream << calls;
        channel.flush();
        return result;
    });
    channel.seek(0);
    stream >> recording.calls;
    return recording;
}

void CallRecorder::noteReturn(bool saved)
{
    calls.append({Call::Kind::Return, {}, 0, false, saved});
}

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openNoted(AT_FDCWD, path, flags, mode);
}

int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openNoted(folder, path, flags, mode);
}

int open64(const char* path, int flags, ...) __attribute__((alias("open")));
int openat64(int folder, const char* path, int flags, ...) __attribute__((alias("openat")));

int mkdirat(int folder, const char* path, mode_t mode) noexcept
{
    const auto result = static_cast<int>(::syscall(SYS_mkdirat, folder, path, mode));
    if (const QByteArray made = watched(folder, path); result == 0 && !made.isEmpty())
        noteMade(made, true);
    return result;
}

int mkdir(const char* path, mode_t mode) noexcept
{
    return mkdirat(AT_FDCWD, path, mode);
}

ssize_t write(int file, const void* bytes, size_t size)
{
    const ssize_t count = ::syscall(SYS_write, file, bytes, size);
    noteWrite(file, armed ? ::lseek(file, 0, SEEK_CUR) - count : 0, bytes, count);
    return count;
}

ssize_t pwrite(int file, const void* bytes, size_t size, off_t offset)
{
    const ssize_t count = ::syscall(SYS_pwrite64, file, bytes, size, offset);
    noteWrite(file, offset, bytes, count);
    return count;
}

ssize_t copy_file_range(int from, off64_t* fromOffset, int to, off64_t* toOffset, size_t size, unsigned int flags)
{
    const ssize_t count = ::syscall(SYS_copy_file_range, from, fromOffset, to, toOffset, size, flags);
    if (count > 0 && isWatched(to)) {
        const off64_t end = toOffset ? *toOffset : ::lseek(to, 0, SEEK_CUR);
        const off64_t sourceEnd = fromOffset ? *fromOffset : ::lseek(from, 0, SEEK_CUR);
        QByteArray bytes(count, Qt::Uninitialized);
        if (::pread(from, bytes.data(), static_cast<size_t>(count), sourceEnd - count) == count)
            noteWrite(to, end - count, bytes.constData(), count);
    }
    return count;
}

int ftruncate(int file, off_t length) noexcept
{
    return noteResize(file, static_cast<int>(::syscall(SYS_ftruncate, file, length)));
}

int fallocate(int file, int mode, off_t offset, off_t length)
{
    return noteResize(file, static_cast<int>(::syscall(SYS_fallocate, file, mode, offset, length)));
}

// No power is cut here: what is to reach the disk need not. The start of writing (sync_file_range) promises nothing.
int fsync(int file)
{
    return armed ? noteSync(file, false) : static_cast<int>(::syscall(SYS_fsync, file));
}

// A new length is brought to the disk too, even a lesser one: the bytes can't be read rightly without it.
int fdatasync(int file)
{
    return fsync(file);
}

int syncfs(int file) noexcept
{
    return armed ? noteSync(file, true) : static_cast<int>(::syscall(SYS_syncfs, file));
}

int rename(const char* from, const char* to) noexcept
{
    return renameNoted(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept
{
    return renameNoted(fromFolder, from, toFolder, to, 0);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned int flags) noexcept
{
    return renameNoted(fromFolder, from, toFolder, to, flags);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept
{
    const auto result = static_cast<int>(::syscall(SYS_linkat, fromFolder, from, toFolder, to, flags));
    if (const QByteArray path = watched(toFolder, to); result == 0)
        noteNames({{path, idOf(path)}});
    return result;
}

int link(const char* from, const char* to) noexcept
{
    return linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int unlinkat(int folder, const char* path, int flags) noexcept
{
    const auto result = static_cast<int>(::syscall(SYS_unlinkat, folder, path, flags));
    if (result == 0)
        noteNames({{watched(folder, path), 0}});
    return result;
}

int unlink(const char* path) noexcept
{
    return unlinkat(AT_FDCWD, path, 0);
}

int rmdir(const char* path) noexcept
{
    return unlinkat(AT_FDCWD, path, AT_REMOVEDIR);
}

int remove(const char* path) noexcept
{
    const int result = unlink(path);
    return result != 0 && errno == EISDIR ? rmdir(path) : result;
}

ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset)
{
    return pwrite(file, bytes, size, offset);
}

int ftruncate64(int file, off64_t length) noexcept __attribute__((alias("ftruncate")));
int fallocate64(int file, int mode, off64_t offset, off64_t length) __attribute__((alias("fallocate")));
}
