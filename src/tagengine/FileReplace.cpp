#include "tagengine/FailureReason.h"
#include "tagengine/FileCommit.h"
#include "tagengine/PosixFile.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <set>
#include <string>
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

CommitResult resultOf(int error)
{
    FailureReason::note(error);
    return isFinal(error) ? CommitResult::Failed : CommitResult::Impossible;
}

bool isLeftover(const std::string& name)
{
    if (!name.starts_with(temporaryPrefix) || !name.ends_with(temporarySuffix))
        return false;
    pid_t owner = 0;
    const auto read = std::from_chars(name.data() + temporaryPrefix.size(), name.data() + name.size(), owner);
    return read.ec == std::errc() && owner > 0 && owner != ::getpid() && ::kill(owner, 0) != 0 && errno == ESRCH;
}

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
    }
    ~SiblingFile()
    {
        if (!descriptor_.isOpen())
            return;
        // Some file systems remove an open file by renaming it, which they may refuse.
        descriptor_.close();
        ::unlink(path_.c_str());
    }
    SiblingFile(const SiblingFile&) = delete;
    SiblingFile& operator=(const SiblingFile&) = delete;

    bool isOpen() const { return descriptor_.isOpen(); }
    int descriptor() const { return descriptor_.get(); }
    bool takePlaceOf(const QByteArray& path)
    {
        if (::rename(path_.c_str(), path.constData()) != 0)
            return false;
        descriptor_.close();
        return true;
    }

private:
    static constexpr int attempts = 100;

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

/// Extended attributes, access-control lists among them.
bool copyAttributes(int from, int to)
{
    const ssize_t size = ::flistxattr(from, nullptr, 0);
    if (size < 0)
        return errno == ENOTSUP;
    std::vector<char> names(static_cast<std::size_t>(size));
    if (size > 0 && ::flistxattr(from, names.data(), names.size()) != size)
        return false;
    for (const char* name = names.data(); name < names.data() + size; name += std::strlen(name) + 1) {
        const std::vector<char> value = attribute(from, name);
        if (attribute(to, name) != value && ::fsetxattr(to, name, value.data(), value.size(), 0) != 0)
            return false;
    }
    return true;
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

void syncFolder(const fs::path& folder)
{
    const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.isOpen())
        ::fsync(descriptor.get());
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
    for (fs::directory_iterator item(folder.toStdString(), error), end; item != end && !error;
         item.increment(error)) {
        if (isLeftover(item->path().filename().string()))
            ::unlink(item->path().c_str());
    }
}

CommitResult FileCommit::replace(const FileChange& change)
{
    const fs::path folder = change.folder().toStdString();
    SiblingFile sibling(folder);
    if (!sibling.isOpen())
        return resultOf(errno);
    if (!writeContent(change, sibling.descriptor()))
        return resultOf(errno);
    if (!copyOwnership(change.descriptor, sibling.descriptor())
        || !copyAttributes(change.descriptor, sibling.descriptor()))
        return resultOf(errno);
    if (::fsync(sibling.descriptor()) != 0) {
        FailureReason::note(errno);
        return CommitResult::Failed;
    }
    if (!sibling.takePlaceOf(change.path))
        return resultOf(errno);
    syncFolder(folder);
    return CommitResult::Done;
}
