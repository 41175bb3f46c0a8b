#include "tagengine/UndoRecord.h"

#include "platform/PathBytes.h"
#include "tagengine/FileLock.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

#include <xxhash.h>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr quint32 magic = 0x536f5675;
constexpr std::int64_t lengthSize = sizeof(quint32);
constexpr std::int64_t checksumSize = sizeof(XXH64_hash_t);
constexpr std::int64_t blockSize = 1 << 20;
constexpr std::int64_t longestHeader = 1 << 20;

QString recordFolder()
{
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    const QString base = QDir::isAbsolutePath(state) ? state : QDir::homePath() + QStringLiteral("/.local/state");
    return base + QStringLiteral("/sonvika/undo");
}

QByteArray recordPathFor(const FileIdentity& identity)
{
    const QString name = QStringLiteral("/%1-%2.undo").arg(identity.device, 0, 16).arg(identity.inode, 0, 16);
    return PathBytes::encode(recordFolder() + name);
}

/// A running checksum over what passes through it.
class Checksum {
public:
    Checksum() { XXH3_64bits_reset(state_.get()); }
    void add(const char* bytes, std::int64_t length)
    {
        XXH3_64bits_update(state_.get(), bytes, static_cast<std::size_t>(length));
    }
    XXH64_hash_t value() const { return XXH3_64bits_digest(state_.get()); }

private:
    std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> state_{XXH3_createState(), &XXH3_freeState};
};

/// Calls @p use with the bytes of a range, block by block. @return false when one can't be read or used.
template <class Use>
bool forEachBlock(int file, std::int64_t offset, std::int64_t length, Use use)
{
    std::vector<char> block(static_cast<std::size_t>(std::min(length, blockSize)));
    for (std::int64_t done = 0; done < length;) {
        const std::int64_t wanted = std::min(length - done, blockSize);
        if (PosixFile::readAt(file, offset + done, block.data(), static_cast<std::size_t>(wanted)) != wanted
            || !use(offset + done, block.data(), wanted))
            return false;
        done += wanted;
    }
    return true;
}

/// Writes a file from its start, in few calls, with the checksum of all of it at the end.
class Appender {
public:
    explicit Appender(int descriptor) : descriptor_(descriptor) {}

    bool append(const char* bytes, std::int64_t length)
    {
        checksum_.add(bytes, length);
        waiting_.append(bytes, length);
        return waiting_.size() < blockSize || flush();
    }
    bool finish()
    {
        const XXH64_hash_t sum = checksum_.value();
        waiting_.append(reinterpret_cast<const char*>(&sum), checksumSize);
        return flush();
    }

private:
    bool flush()
    {
        const bool done = PosixFile::writeAt(descriptor_, position_, waiting_.constData(),
                                             static_cast<std::size_t>(waiting_.size()));
        position_ += waiting_.size();
        waiting_.clear();
        return done;
    }

    int descriptor_;
    std::int64_t position_ = 0;
    QByteArray waiting_;
    Checksum checksum_;
};

/// A new record, locked, so that whoever finds it knows that its writer is alive.
FileDescriptor openNew(const QByteArray& path)
{
    FileDescriptor record(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!record.isOpen() || !lockFile(record.get()))
        return FileDescriptor();
    // It may have been found empty, and removed, before it was locked.
    const FileIdentity identity = FileIdentity::ofDescriptor(record.get());
    const bool usable = identity.links > 0 && (identity.size == 0 || ::ftruncate(record.get(), 0) == 0);
    return usable ? std::move(record) : FileDescriptor();
}

} // namespace

std::optional<UndoRecord> UndoRecord::create(int file, const FileIdentity& identity, const QByteArray& path,
                                             std::vector<Range> ranges, Durability durability)
{
    UndoRecord record;
    record.recordPath_ = recordPathFor(identity);
    record.path_ = path;
    record.identity_ = identity;
    record.ranges_ = std::move(ranges);
    record.oldBytesStart_ = lengthSize + record.header().size();
    if (record.oldBytesStart_ > longestHeader)
        return std::nullopt;
    record.record_ = openNew(record.recordPath_);
    if (!record.record_.isOpen() && errno == ENOENT && QDir().mkpath(recordFolder()))
        record.record_ = openNew(record.recordPath_);
    if (!record.record_.isOpen())
        return std::nullopt;
    const bool written =
        record.write(file) && (durability == Durability::AgainstKill || ::fsync(record.record_.get()) == 0);
    if (!written) {
        record.remove();
        return std::nullopt;
    }
    return record;
}

bool UndoRecord::write(int file) const
{
    Appender record(record_.get());
    const QByteArray start = header();
    const auto length = static_cast<quint32>(start.size());
    record.append(reinterpret_cast<const char*>(&length), lengthSize);
    record.append(start.constData(), start.size());
    for (const auto& range : ranges_) {
        if (!forEachBlock(file, range.offset, range.length, [&](std::int64_t, const char* bytes, std::int64_t count) {
                return record.append(bytes, count);
            }))
            return false;
    }
    return record.finish();
}

bool UndoRecord::recover(const QByteArray& path)
{
    const FileIdentity identity = FileIdentity::ofPath(path.constData());
    return !exists(identity) || recoverBy(recordPathFor(identity), path);
}

bool UndoRecord::exists(const FileIdentity& identity)
{
    return identity.inode != 0 && ::access(recordPathFor(identity).constData(), F_OK) == 0;
}

void UndoRecord::recoverAll()
{
    const QFileInfoList records = QDir(recordFolder()).entryInfoList({QStringLiteral("*.undo")}, QDir::Files);
    for (const auto& record : records)
        recoverBy(PathBytes::encode(record.filePath()));
}

/// @param path that the file has now, where it is known: it may have been renamed since.
bool UndoRecord::recoverBy(const QByteArray& recordPath, const QByteArray& path)
{
    UndoRecord record;
    record.recordPath_ = recordPath;
    record.record_ = FileDescriptor(::open(recordPath.constData(), O_RDWR | O_CLOEXEC));
    if (!record.record_.isOpen())
        return errno == ENOENT;
    if (!lockFile(record.record_.get()))
        return false;
    // The change may have come to its end while the lock was waited for.
    if (FileIdentity::ofDescriptor(record.record_.get()).links == 0)
        return true;
    switch (record.load()) {
    case State::Unreadable:
        return false;
    case State::NotWhole:
        return record.remove();
    case State::Whole:
        return record.recoverFile(path.isEmpty() ? record.path_ : path);
    }
    return false;
}

bool UndoRecord::recoverFile(const QByteArray& path)
{
    const FileDescriptor file(::open(path.constData(), O_RDWR | O_CLOEXEC));
    if (!file.isOpen()) {
        // A file that is gone needs no record; one whose folder is gone may be on a volume that comes back.
        const QFileInfo info(PathBytes::decode(path));
        const bool isGone = errno == ENOENT && info.dir().exists();
        return isGone && remove();
    }
    const FileLock lock(file.get());
    if (!lock.isHeld())
        return false;
    const bool isThatFile = identity_.isSameFile(FileIdentity::ofDescriptor(file.get()));
    return (!isThatFile || rollBack(file.get())) && remove();
}

UndoRecord::State UndoRecord::load()
{
    quint32 length = 0;
    std::int64_t count = PosixFile::readAt(record_.get(), 0, reinterpret_cast<char*>(&length), lengthSize);
    if (count != lengthSize || length > longestHeader)
        return count < 0 ? State::Unreadable : State::NotWhole;
    QByteArray header(static_cast<qsizetype>(length), Qt::Uninitialized);
    count = PosixFile::readAt(record_.get(), lengthSize, header.data(), length);
    if (count != length || !parseHeader(header))
        return count < 0 ? State::Unreadable : State::NotWhole;
    oldBytesStart_ = lengthSize + length;
    return check(oldBytesStart_ + oldLength());
}

UndoRecord::State UndoRecord::check(std::int64_t contentLength) const
{
    if (FileIdentity::ofDescriptor(record_.get()).size != contentLength + checksumSize)
        return State::NotWhole;
    Checksum checksum;
    XXH64_hash_t stored = 0;
    const bool isRead =
        forEachBlock(record_.get(), 0, contentLength,
                     [&](std::int64_t, const char* bytes, std::int64_t count) {
                         checksum.add(bytes, count);
                         return true;
                     })
        && PosixFile::readAt(record_.get(), contentLength, reinterpret_cast<char*>(&stored), checksumSize)
               == checksumSize;
    if (!isRead)
        return State::Unreadable;
    return stored == checksum.value() ? State::Whole : State::NotWhole;
}

QByteArray UndoRecord::header() const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << magic << path_ << quint64(identity_.device) << quint64(identity_.inode) << qint64(identity_.birth)
           << qint64(identity_.size) << quint32(ranges_.size());
    for (const auto& range : ranges_)
        stream << qint64(range.offset) << qint64(range.length);
    return bytes;
}

bool UndoRecord::parseHeader(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    quint32 mark = 0;
    quint32 count = 0;
    quint64 device = 0;
    quint64 inode = 0;
    qint64 birth = 0;
    qint64 size = 0;
    stream >> mark >> path_ >> device >> inode >> birth >> size >> count;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        qint64 offset = 0;
        qint64 length = 0;
        stream >> offset >> length;
        ranges_.push_back({offset, length});
    }
    identity_.device = device;
    identity_.inode = inode;
    identity_.birth = birth;
    identity_.size = size;
    return mark == magic && stream.status() == QDataStream::Ok
           && std::all_of(ranges_.begin(), ranges_.end(),
                          [](const Range& range) { return range.offset >= 0 && range.length >= 0; });
}

std::int64_t UndoRecord::oldLength() const
{
    std::int64_t length = 0;
    for (const auto& range : ranges_)
        length += range.length;
    return length;
}

bool UndoRecord::readOld(std::int64_t offset, char* into, std::size_t length) const
{
    std::int64_t start = oldBytesStart_;
    for (const auto& range : ranges_) {
        if (offset >= range.offset && offset < range.offset + range.length)
            return PosixFile::readAt(record_.get(), start + offset - range.offset, into, length)
                   == static_cast<std::int64_t>(length);
        start += range.length;
    }
    return false;
}

bool UndoRecord::rollBack(int file) const
{
    std::int64_t start = oldBytesStart_;
    for (const auto& range : ranges_) {
        const std::int64_t shift = range.offset - start;
        const bool done = forEachBlock(
            record_.get(), start, range.length, [&](std::int64_t offset, const char* bytes, std::int64_t count) {
                return PosixFile::writeAt(file, offset + shift, bytes, static_cast<std::size_t>(count));
            });
        if (!done)
            return false;
        start += range.length;
    }
    return FileIdentity::ofDescriptor(file).size == identity_.size || ::ftruncate(file, identity_.size) == 0;
}

bool UndoRecord::remove()
{
    // A record that can't be removed is made one that is not whole.
    return ::unlink(recordPath_.constData()) == 0 || ::ftruncate(record_.get(), 0) == 0;
}
