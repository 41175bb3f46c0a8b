#include "naming/FileMove.h"

#include "platform/FileSystem.h"
#include "platform/PathBytes.h"
#include "tagengine/FileLock.h"
#include "tagengine/PosixFile.h"

#include <QByteArrayList>

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

[[noreturn]] void fail(int error)
{
    throw std::system_error(error, std::generic_category());
}

/// A folder in which names can be looked up; reading it needs no permission.
FileDescriptor openFolder(int from, const QByteArray& path)
{
    return FileDescriptor(::openat(from, path.isEmpty() ? "." : path.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

bool isSameFolder(const FileDescriptor& one, const FileDescriptor& other)
{
    struct stat a {};
    struct stat b {};
    return ::fstat(one.get(), &a) == 0 && ::fstat(other.get(), &b) == 0 && a.st_dev == b.st_dev
           && a.st_ino == b.st_ino;
}

/// Whether the way up from a folder comes by another one.
bool liesBelow(const FileDescriptor& folder, const FileDescriptor& top)
{
    FileDescriptor at = openFolder(folder.get(), ".");
    while (at.isOpen() && !isSameFolder(at, top)) {
        FileDescriptor above = openFolder(at.get(), "..");
        if (isSameFolder(above, at))
            return false;
        at = std::move(above);
    }
    return at.isOpen();
}

bool hasStraightComponents(const QByteArray& name)
{
    const QByteArrayList components = name.split('/');
    return !name.startsWith('/') && !components.contains(".") && !components.contains("..");
}

/// Where a name leads: the folder itself, whatever becomes of the way to it, and the last component.
struct Place {
    FileDescriptor folder;
    QByteArray name;
};

/// Throws as FileMove::move.
Place placeFor(const QByteArray& folder, const QByteArray& name)
{
    if (!hasStraightComponents(name))
        throw FileMove::LeadsOut();
    const auto cut = name.lastIndexOf('/');
    FileDescriptor top = openFolder(AT_FDCWD, folder);
    if (!top.isOpen())
        fail(errno);
    if (cut < 0)
        return {std::move(top), name};
    FileDescriptor inner = openFolder(top.get(), name.left(cut));
    if (!inner.isOpen())
        fail(errno);
    if (!liesBelow(inner, top))
        throw FileMove::LeadsOut();
    return {std::move(inner), name.mid(cut + 1)};
}

/// A second name that the file gets before it loses the first. @return the error, 0 for none; as all moves below.
int moveByLink(const QByteArray& from, const Place& to)
{
    if (::linkat(AT_FDCWD, from.constData(), to.folder.get(), to.name.constData(), 0) != 0)
        return errno;
    if (::unlink(from.constData()) == 0)
        return 0;
    const int error = errno;
    ::unlinkat(to.folder.get(), to.name.constData(), 0);
    return error;
}

int moveAfterALook(const QByteArray& from, const Place& to)
{
    // A folder that can't be read can't be locked.
    const FileDescriptor folder(::openat(to.folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen() && !lockFile(folder.get()))
        return EBUSY;
    struct stat found {};
    if (::fstatat(to.folder.get(), to.name.constData(), &found, AT_SYMLINK_NOFOLLOW) == 0)
        return EEXIST;
    if (errno != ENOENT)
        return errno;
    return ::renameat(AT_FDCWD, from.constData(), to.folder.get(), to.name.constData()) == 0 ? 0 : errno;
}

bool hasNoLinks(int error)
{
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP || error == EPERM || error == EMLINK;
}

int moveWithoutReplacing(const QByteArray& from, const Place& to)
{
    if (::renameat2(AT_FDCWD, from.constData(), to.folder.get(), to.name.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    int error = errno;
    if (error == EINVAL || error == ENOSYS) {
        error = moveByLink(from, to);
        if (hasNoLinks(error))
            error = moveAfterALook(from, to);
    }
    return error;
}

} // namespace

bool FileMove::leadsOut(const QString& folder, const QString& name)
{
    const QByteArray bytes = PathBytes::encode(name);
    if (!bytes.contains('/'))
        return !hasStraightComponents(bytes);
    try {
        placeFor(PathBytes::encode(folder), bytes);
    } catch (const LeadsOut&) {
        return true;
    } catch (const std::system_error&) {
    }
    return false;
}

void FileMove::move(const QString& folder, const QString& oldName, const QString& newName)
{
    if (newName.contains(QChar::Null))
        fail(EINVAL);
    if (oldName == newName)
        return FileSystem::checkResourceIsReachable(folder + oldName);
    const QByteArray from = PathBytes::encode(folder + oldName);
    const Place to = placeFor(PathBytes::encode(folder), PathBytes::encode(newName));
    if (to.name.isEmpty())
        fail(EEXIST);
    int error = moveWithoutReplacing(from, to);
    if (error == EEXIST && FileSystem::isSameEntry(folder + oldName, folder + newName))
        error = ::renameat(AT_FDCWD, from.constData(), to.folder.get(), to.name.constData()) == 0 ? 0 : errno;
    if (error != 0)
        fail(error);
}
