#include "tagengine/RecordSlots.h"

#include "platform/PathBytes.h"
#include "tagengine/FileLock.h"

#include <QDir>

#include <cerrno>
#include <charconv>
#include <ctime>
#include <filesystem>
#include <mutex>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <xxhash.h>

namespace RecordSlots {

namespace {

namespace fs = std::filesystem;

constexpr auto slotSuffix = ".slot";
constexpr auto olderSuffix = ".undo";
constexpr int mostSlots = 256;
constexpr std::int64_t usualSize = 64 * 1024;

QByteArray folder()
{
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    const QString base = QDir::isAbsolutePath(state) ? state : QDir::homePath() + QStringLiteral("/.local/state");
    return PathBytes::encode(base + QStringLiteral("/sonvika/undo/"));
}

/// What a slot says. One that can't be read may say anything: it counts as in force.
Head headOf(int slot)
{
    Head head;
    const auto count = PosixFile::readAt(slot, 0, reinterpret_cast<char*>(&head), sizeof head);
    if (count == sizeof head)
        return head;
    const FileIdentity identity = FileIdentity::ofDescriptor(slot);
    const bool isShort = identity.isRegular && identity.size < static_cast<std::int64_t>(sizeof head);
    return isShort ? Head() : Head{1};
}

/// The device and inode in the name of a record of the older version.
Head headOfOlder(const QByteArray& path)
{
    const QByteArray name = path.mid(path.lastIndexOf('/') + 1);
    Head head{1};
    const auto device = std::from_chars(name.begin(), name.end(), head.device, 16);
    if (device.ptr != name.end())
        std::from_chars(device.ptr + 1, name.end(), head.inode, 16);
    return head;
}

/// What lies in the folder, looked at again only when its entries have changed.
class Watch {
public:
    /// Calls @p use with the path and the head of each record in force.
    template <class Use>
    void forEach(Use use)
    {
        const std::lock_guard guard(mutex_);
        refresh();
        for (const auto& entry : entries_) {
            const Head head = entry.file.isOpen() ? headOf(entry.file.get()) : headOfOlder(entry.path);
            if (head.isInForce())
                use(entry.path, head);
        }
    }

private:
    struct Entry {
        QByteArray path;
        FileDescriptor file; ///< not open for a record of the older version
    };

    void refresh()
    {
        const QByteArray path = folder();
        const FileIdentity now = FileIdentity::ofPath(path.constData());
        if (path == folder_ && isSettled_ && now.isUnchanged(identity_))
            return;
        folder_ = path;
        identity_ = now;
        isSettled_ = now.isSettled();
        entries_.clear();
        std::error_code error;
        for (fs::directory_iterator item(path.toStdString(), error), end; item != end && !error;
             item.increment(error))
            add(QByteArray::fromStdString(item->path().string()));
    }

    void add(const QByteArray& path)
    {
        if (isOlderRecord(path))
            entries_.push_back({path, FileDescriptor()});
        else if (path.endsWith(slotSuffix))
            entries_.push_back({path, FileDescriptor(::open(path.constData(), O_RDONLY | O_CLOEXEC))});
    }

    std::mutex mutex_;
    QByteArray folder_;
    FileIdentity identity_;
    bool isSettled_ = false; ///< another change would show in the folder's time
    std::vector<Entry> entries_;
};

/// Never destroyed: the search for records goes on in the background while the program ends.
Watch& watch()
{
    static auto* instance = new Watch;
    return *instance;
}

bool isStillThere(const QByteArray& path, int slot)
{
    return FileIdentity::ofDescriptor(slot).isSameFile(FileIdentity::ofPath(path.constData()));
}

/// Gives a new slot the room of most records: what is overwritten later needs no news of the file to reach the disk.
bool fillSlot(int slot)
{
    const std::vector<char> zeros(usualSize);
    return PosixFile::writeAt(slot, 0, zeros.data(), zeros.size());
}

std::optional<Slot> makeSlot(const QByteArray& path)
{
    FileDescriptor file(::open(path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file.isOpen() || !lockFile(file.get(), false))
        return std::nullopt;
    if (!fillSlot(file.get())) {
        ::unlink(path.constData());
        return std::nullopt;
    }
    return Slot(path, std::move(file), false);
}

std::optional<Slot> takeOrMake(const QByteArray& path)
{
    FileDescriptor file(::open(path.constData(), O_RDWR | O_CLOEXEC));
    if (!file.isOpen())
        return errno == ENOENT ? makeSlot(path) : std::nullopt;
    if (!lockFile(file.get(), false) || !isStillThere(path, file.get()))
        return std::nullopt;
    const Head head = headOf(file.get());
    return head.isInForce() ? std::nullopt : std::optional(Slot(path, std::move(file), head.settled != 0));
}

/// Makes the folders. @return the one around the first that had to be made; empty when none had to, or none could be.
QByteArray makeFolders(const QByteArray& path)
{
    const QString wanted = PathBytes::decode(path);
    QDir around(wanted);
    while (!around.exists() && around.path().contains(QLatin1Char('/')) && !around.isRoot())
        around.setPath(QDir::cleanPath(around.path() + QStringLiteral("/..")));
    return QDir().mkpath(wanted) ? PathBytes::encode(around.path()) : QByteArray();
}

/// Puts the entries of new folders on the disk. Once in the life of a state folder.
bool syncAll(const QByteArray& folderAround)
{
    const FileDescriptor descriptor(::open(folderAround.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return descriptor.isOpen() && ::syncfs(descriptor.get()) == 0;
}

} // namespace

Slot::~Slot()
{
    // The record of a change that could not be taken back stays in force.
    if (file_.isOpen())
        ::flock(file_.get(), LOCK_UN);
}

bool Slot::sync()
{
    if (isSettled_)
        return ::fdatasync(file_.get()) == 0;
    isSettled_ = ::fsync(file_.get()) == 0 && PosixFile::syncFolder(path_.left(path_.lastIndexOf('/') + 1));
    return isSettled_;
}

bool Slot::clear()
{
    if (isOlderRecord(path_))
        return ::unlink(path_.constData()) == 0 || ::ftruncate(file_.get(), 0) == 0;
    Head none;
    none.settled = isSettled_ ? 1 : 0;
    const bool done = PosixFile::writeAt(file_.get(), 0, reinterpret_cast<const char*>(&none), sizeof none);
    if (done && FileIdentity::ofDescriptor(file_.get()).size > 2 * usualSize)
        static_cast<void>(::ftruncate(file_.get(), usualSize));
    return done;
}

std::optional<Slot> take()
{
    const QByteArray path = folder();
    if (::access(path.constData(), F_OK) != 0) {
        const QByteArray around = makeFolders(path);
        if (around.isEmpty() || !syncAll(around))
            return std::nullopt;
    }
    for (int number = 0; number < mostSlots; ++number) {
        errno = 0;
        if (auto slot = takeOrMake(path + QByteArray::number(number) + slotSuffix))
            return slot;
        if (errno == ENOSPC || errno == EACCES || errno == EROFS)
            break;
    }
    return std::nullopt;
}

std::optional<Slot> lock(const QByteArray& path, bool waits)
{
    FileDescriptor file(::open(path.constData(), O_RDWR | O_CLOEXEC));
    if (!file.isOpen() || !lockFile(file.get(), waits))
        return std::nullopt;
    return Slot(path, std::move(file), false);
}

std::vector<QByteArray> inForce()
{
    std::vector<QByteArray> paths;
    watch().forEach([&](const QByteArray& path, const Head&) { paths.push_back(path); });
    return paths;
}

std::vector<QByteArray> inForceFor(const QByteArray& path, const FileIdentity& identity)
{
    std::vector<QByteArray> paths;
    std::uint64_t hash = 0;
    watch().forEach([&](const QByteArray& slot, const Head& head) {
        hash = hash == 0 ? hashOf(path) : hash;
        if (head.pathHash == hash || (head.inode == identity.inode && head.device == identity.device))
            paths.push_back(slot);
    });
    return paths;
}

bool isSpokenOf(const QByteArray& path, const FileIdentity& identity)
{
    return !inForceFor(path, identity).empty();
}

Head headOf(const Slot& slot)
{
    // It may have ended, and been removed, while the lock was waited for.
    if (!isStillThere(slot.path(), slot.descriptor()))
        return {};
    return isOlderRecord(slot.path()) ? headOfOlder(slot.path()) : headOf(slot.descriptor());
}

std::uint64_t hashOf(const QByteArray& path)
{
    return XXH3_64bits(path.constData(), static_cast<std::size_t>(path.size()));
}

bool isOlderRecord(const QByteArray& slotPath)
{
    return slotPath.endsWith(olderSuffix);
}

} // namespace RecordSlots
