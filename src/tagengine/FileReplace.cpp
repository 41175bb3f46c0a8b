#include "tagengine/FailureReason.h"
#include "tagengine/FileCommit.h"
#include "tagengine/FileLock.h"
#include "tagengine/PosixFile.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

const std::string temporaryPrefix = ".sonvika-";
const std::string temporarySuffix = ".tmp";

/// Errors that no other way of writing would escape.
bool isFinal(int error)
{
    return error == ENOSPC || error == EDQUOT || error == EIO;
}

bool isUnsupported(int error)
{
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

CommitResult resultOf(int error)
{
    FailureReason::note(error);
    return isFinal(error) ? CommitResult::Failed : CommitResult::Impossible;
}

/// The process in a temporary file's name; 0 for other names.
pid_t ownerOf(const std::string& name)
{
    pid_t owner = 0;
    if (name.starts_with(temporaryPrefix) && name.ends_with(temporarySuffix))
        std::from_chars(name.data() + temporaryPrefix.size(), name.data() + name.size(), owner);
    return owner;
}

bool isOfYesterday(int file)
{
    using namespace std::chrono;
    const auto now = duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
    return now - FileIdentity::ofDescriptor(file).modified > nanoseconds(24h).count();
}

/// Removes a temporary file whose process has ended. The process of another container has a number that may be nobody's
/// here, and after a start of the machine the number may be somebody else's; but who lives has locked its file.
void removeIfLeft(const fs::path& path)
{
    const pid_t owner = ownerOf(path.filename().string());
    if (owner <= 0 || owner == ::getpid())
        return;
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!file.isOpen() || !lockFile(file.get(), false))
        return;
    const bool isAlive = ::kill(owner, 0) == 0 || errno != ESRCH;
    if (!isAlive || isOfYesterday(file.get()))
        ::unlink(path.c_str());
}

/// Waits, a short while, until nobody else has the file open: who opened it under its old name may be about to write.
/// Only asks a file of one's own, and a file system that can tell.
void waitUntilUnused(int file)
{
    using namespace std::chrono_literals;
    constexpr int longest = 100;
    // A lease that is broken sends a signal, SIGIO unless another is named, which would end the program.
    if (::fcntl(file, F_SETSIG, SIGURG) != 0)
        return;
    for (int tries = 0; tries < longest && ::fcntl(file, F_SETLEASE, F_WRLCK) != 0 && errno == EAGAIN; ++tries)
        std::this_thread::sleep_for(1ms);
    ::fcntl(file, F_SETLEASE, F_UNLCK);
}

enum class Placing {
    Done,
    Stale,      ///< the old file is there, changed by somebody else
    Unsettled,  ///< the new file is there, but perhaps not on the disk
    Impossible, ///< nothing was done; errno tells why
};

/// A new file beside the old one, gone again unless it takes the old one's place.
class SiblingFile {
public:
    explicit SiblingFile(const fs::path& folder)
    {
        static std::atomic<unsigned int> counter{0};
        const std::string start = temporaryPrefix + std::to_string(::getpid()) + "-";
        // A process of the same number, in another container or before, may have left its own.
        for (int attempt = 0; attempt < attempts && !descriptor_.isOpen(); ++attempt) {
            path_ = folder / (start + std::to_string(counter++) + temporarySuffix);
            descriptor_ = FileDescriptor(::open(path_.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
            if (!descriptor_.isOpen() && errno != EEXIST)
                break;
        }
        if (descriptor_.isOpen())
            lockFile(descriptor_.get(), false);
    }
    ~SiblingFile()
    {
        if (!descriptor_.isOpen() || !isOurs(path_.c_str()))
            return;
        // Some file systems remove an open file by renaming it, which they may refuse.
        descriptor_.close();
        ::unlink(path_.c_str());
    }
    SiblingFile(const SiblingFile&) = delete;
    SiblingFile& operator=(const SiblingFile&) = delete;

    bool isOpen() const { return descriptor_.isOpen(); }
    int descriptor() const { return descriptor_.get(); }

    /// Puts the new file in the place of the one that was read, and nobody else's.
    Placing takePlaceOf(const FileChange& change)
    {
        if (!isOurs(path_.c_str()) || !change.isCurrent())
            return Placing::Stale;
        const char* path = change.path.constData();
        if (::renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, path, RENAME_EXCHANGE) != 0)
            return replacePlainly(change);
        if (!PosixFile::syncFolder(change.folder()))
            return giveBack(path) ? Placing::Impossible : Placing::Unsettled;
        // Both are there now: what was replaced is looked at once more before it goes.
        waitUntilUnused(change.descriptor);
        if (!change.identity.isUnchanged(FileIdentity::ofPath(path_.c_str())))
            return giveBack(path) && PosixFile::syncFolder(change.folder()) ? Placing::Stale : Placing::Unsettled;
        ::unlink(path_.c_str());
        descriptor_.close();
        return Placing::Done;
    }

private:
    static constexpr int attempts = 100;

    bool isOurs(const char* path) const
    {
        return FileIdentity::ofDescriptor(descriptor_.get()).isSameFile(FileIdentity::ofPath(path));
    }

    /// For file systems that can't exchange two files.
    Placing replacePlainly(const FileChange& change)
    {
        if (!isUnsupported(errno))
            return Placing::Impossible;
        if (::rename(path_.c_str(), change.path.constData()) != 0)
            return Placing::Impossible;
        descriptor_.close();
        return PosixFile::syncFolder(change.folder()) ? Placing::Done : Placing::Unsettled;
    }

    /// Takes the new file back out of the place. @return false when it is not there any more, or stays.
    bool giveBack(const char* path)
    {
        const int error = errno;
        const bool isBack =
            isOurs(path) && ::renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, path, RENAME_EXCHANGE) == 0;
        errno = error;
        return isBack;
    }

    fs::path path_;
    FileDescriptor descriptor_;
};

bool writeContent(const FileChange& change, int target)
{
    bool written = true;
    change.content.visit(0, change.content.length(), [&](std::int64_t position, const PieceTable::Piece& piece) {
        if (!written)
            return;
        written = piece.isOriginal()
                      ? PosixFile::copy(change.descriptor, piece.offset, target, position, piece.length)
                      : PosixFile::writeAt(target, position, piece.data(), static_cast<std::size_t>(piece.length));
    });
    return written;
}

std::vector<char> attribute(int descriptor, const char* name)
{
    const ssize_t size = ::fgetxattr(descriptor, name, nullptr, 0);
    std::vector<char> value(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    if (!value.empty())
        value.resize(static_cast<std::size_t>(
            std::max<ssize_t>(::fgetxattr(descriptor, name, value.data(), value.size()), 0)));
    return value;
}

std::optional<std::vector<std::string>> attributeNames(int descriptor)
{
    const ssize_t size = ::flistxattr(descriptor, nullptr, 0);
    if (size < 0)
        return errno == ENOTSUP ? std::optional(std::vector<std::string>()) : std::nullopt;
    std::vector<char> list(static_cast<std::size_t>(size));
    if (size > 0 && ::flistxattr(descriptor, list.data(), list.size()) != size)
        return std::nullopt;
    std::vector<std::string> names;
    for (const char* name = list.data(); name < list.data() + size; name += names.back().size() + 1)
        names.emplace_back(name);
    return names;
}

/// Extended attributes, access-control lists among them. What the folder gives to new files goes, but for what is the
/// system's own.
bool copyAttributes(int from, int to)
{
    const auto names = attributeNames(from);
    const auto given = attributeNames(to);
    if (!names || !given)
        return false;
    for (const auto& name : *given) {
        const bool isWanted =
            name.starts_with("security.") || std::find(names->begin(), names->end(), name) != names->end();
        if (!isWanted && ::fremovexattr(to, name.c_str()) != 0)
            return false;
    }
    return std::all_of(names->begin(), names->end(), [&](const std::string& name) {
        const std::vector<char> value = attribute(from, name.c_str());
        return attribute(to, name.c_str()) == value
               || ::fsetxattr(to, name.c_str(), value.data(), value.size(), 0) == 0;
    });
}

bool copyOwnership(int from, int to)
{
    struct stat wanted {};
    struct stat given {};
    if (::fstat(from, &wanted) != 0 || ::fstat(to, &given) != 0)
        return false;
    const bool sameOwner = wanted.st_uid == given.st_uid && wanted.st_gid == given.st_gid;
    return (sameOwner || ::fchown(to, wanted.st_uid, wanted.st_gid) == 0)
           && ::fchmod(to, wanted.st_mode & 07777) == 0;
}

} // namespace

void FileCommit::removeLeftovers(const QByteArray& folder)
{
    static std::mutex mutex;
    static std::set<QByteArray> visited;
    {
        const std::lock_guard lock(mutex);
        if (!visited.insert(folder).second)
            return;
    }
    std::error_code error;
    for (fs::directory_iterator item(folder.toStdString(), error), end; item != end && !error; item.increment(error))
        removeIfLeft(item->path());
}

CommitResult FileCommit::replace(const FileChange& change)
{
    const fs::path folder = change.folder().toStdString();
    SiblingFile sibling(folder);
    if (!sibling.isOpen())
        return resultOf(errno);
    if (!writeContent(change, sibling.descriptor()))
        return resultOf(errno);
    if (!copyAttributes(change.descriptor, sibling.descriptor())
        || !copyOwnership(change.descriptor, sibling.descriptor()))
        return resultOf(errno);
    if (::fsync(sibling.descriptor()) != 0 || !PosixFile::flush(sibling.descriptor())) {
        FailureReason::note(errno);
        return CommitResult::Failed;
    }
    switch (sibling.takePlaceOf(change)) {
    case Placing::Done:
        return CommitResult::Done;
    case Placing::Stale:
        return CommitResult::Stale;
    case Placing::Impossible:
        return resultOf(errno);
    case Placing::Unsettled:
        FailureReason::note(errno);
        return CommitResult::Failed;
    }
    return CommitResult::Failed;
}
