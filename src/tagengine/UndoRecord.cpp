#include "tagengine/UndoRecord.h"

#include "tagengine/RecordBytes.h"
#include "tagengine/VolumeId.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

#include <unistd.h>

namespace {

using RecordBytes::blockSize;
using RecordSlots::Head;

constexpr std::uint32_t mark = 0x53527532;
constexpr std::int64_t headSize = sizeof(Head);
constexpr std::int64_t lengthSize = sizeof(quint32);
constexpr std::int64_t longestHeader = 1 << 20;
constexpr std::int64_t reach = 4096; // how far around a range is looked whether all is as it was

struct Stretch {
    std::int64_t begin;
    std::int64_t end;
};

/// What lies around the ranges, a little way, and the end of the file.
std::vector<Stretch> around(const std::vector<UndoRecord::Range>& ranges, std::int64_t oldSize)
{
    std::vector<Stretch> found;
    std::int64_t done = 0;
    const auto addGap = [&](std::int64_t begin, std::int64_t end, bool isFirst) {
        const std::int64_t middle = isFirst ? begin : std::min(begin + reach, end);
        if (begin < middle)
            found.push_back({begin, middle});
        if (const std::int64_t last = std::max(end - reach, middle); last < end)
            found.push_back({last, end});
    };
    for (const auto& range : ranges) {
        addGap(done, range.offset, done == 0);
        done = range.offset + range.oldLength;
    }
    addGap(done, oldSize, false);
    return found;
}

} // namespace

std::optional<UndoRecord> UndoRecord::create(const FileChange& change, std::vector<Range> ranges)
{
    auto slot = RecordSlots::take();
    if (!slot)
        return std::nullopt;
    UndoRecord record(*std::move(slot));
    if (!record.describe(change, std::move(ranges)))
        return std::nullopt;
    if (!record.write(change) || !record.slot_.sync()) {
        const int error = errno;
        record.slot_.clear();
        errno = error;
        return std::nullopt;
    }
    return record;
}

bool UndoRecord::describe(const FileChange& change, std::vector<Range> ranges)
{
    path_ = change.path;
    volume_ = VolumeId::of(change.descriptor);
    oldSize_ = change.content.originalLength();
    newSize_ = change.content.length();
    ranges_ = std::move(ranges);
    const auto found = surroundings(change.descriptor);
    surroundings_ = found.value_or(0);
    return found && std::all_of(ranges_.begin(), ranges_.end(), [&](const Range& range) {
               return addParts(change.content, range);
           });
}

/// @return false for a change that moves bytes from outside of the ranges, which the record would not have.
bool UndoRecord::addParts(const PieceTable& content, const Range& range)
{
    bool isKept = true;
    content.visit(range.offset, range.newLength, [&](std::int64_t position, const PieceTable::Piece& piece) {
        const bool isOld = piece.isOriginal();
        isKept = isKept && (!isOld || std::any_of(ranges_.begin(), ranges_.end(), [&](const Range& old) {
                     return piece.offset >= old.offset && piece.offset + piece.length <= old.offset + old.oldLength;
                 }));
        parts_.push_back({position, piece.length, isOld, isOld ? piece.offset : newLength_});
        newLength_ += isOld ? 0 : piece.length;
    });
    return isKept;
}

bool UndoRecord::write(const FileChange& change)
{
    RecordBytes::Appender record(slot_.descriptor(), headSize);
    const QByteArray start = header();
    const auto length = static_cast<quint32>(start.size());
    if (length > longestHeader || !record.append(reinterpret_cast<const char*>(&length), lengthSize)
        || !record.append(start.constData(), length))
        return false;
    placeBytes(length);
    for (const auto& range : ranges_) {
        const auto append = [&](std::int64_t, const char* bytes, std::int64_t count) {
            return record.append(bytes, count);
        };
        if (!RecordBytes::forEachBlock(change.descriptor, range.offset, range.oldLength, append))
            return false;
    }
    bool isWritten = true;
    for (const auto& range : ranges_) {
        change.content.visit(range.offset, range.newLength, [&](std::int64_t, const PieceTable::Piece& piece) {
            isWritten = isWritten && (piece.isOriginal() || record.append(piece.data(), piece.length));
        });
    }
    const Head head{mark,
                    1,
                    RecordSlots::hashOf(path_),
                    change.identity.device,
                    change.identity.inode,
                    static_cast<std::uint64_t>(record.length()),
                    record.checksum()};
    return isWritten && record.finish(reinterpret_cast<const char*>(&head), headSize);
}

void UndoRecord::placeBytes(std::int64_t headerLength)
{
    oldBytesStart_ = headSize + lengthSize + headerLength;
    newBytesStart_ = oldBytesStart_;
    for (const auto& range : ranges_)
        newBytesStart_ += range.oldLength;
}

QByteArray UndoRecord::header() const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << path_ << volume_ << qint64(oldSize_) << qint64(newSize_) << quint64(surroundings_)
           << quint32(ranges_.size()) << quint32(parts_.size());
    for (const auto& range : ranges_)
        stream << qint64(range.offset) << qint64(range.oldLength) << qint64(range.newLength);
    for (const auto& part : parts_)
        stream << qint64(part.position) << qint64(part.length) << part.isOld << qint64(part.offset);
    return bytes;
}

bool UndoRecord::parseHeader(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_0);
    qint64 oldSize = 0;
    qint64 newSize = 0;
    quint64 surroundings = 0;
    quint32 ranges = 0;
    quint32 parts = 0;
    stream >> path_ >> volume_ >> oldSize >> newSize >> surroundings >> ranges >> parts;
    oldSize_ = oldSize;
    newSize_ = newSize;
    surroundings_ = surroundings;
    qint64 a = 0;
    qint64 b = 0;
    qint64 c = 0;
    bool isOld = false;
    for (; ranges > 0 && stream.status() == QDataStream::Ok; --ranges) {
        stream >> a >> b >> c;
        ranges_.push_back({a, b, c});
    }
    for (; parts > 0 && stream.status() == QDataStream::Ok; --parts) {
        stream >> a >> b >> isOld >> c;
        parts_.push_back({a, b, isOld, c});
    }
    return stream.status() == QDataStream::Ok;
}

std::pair<UndoRecord, UndoRecord::State> UndoRecord::load(RecordSlots::Slot slot)
{
    UndoRecord record(std::move(slot));
    const State state = record.read();
    return {std::move(record), state};
}

UndoRecord::State UndoRecord::read()
{
    struct {
        Head head;
        quint32 length = 0;
    } start;
    const int slot = slot_.descriptor();
    const auto readAt = [&](std::int64_t offset, void* into, std::int64_t wanted) {
        return PosixFile::readAt(slot, offset, static_cast<char*>(into), static_cast<std::size_t>(wanted));
    };
    const FileIdentity identity = FileIdentity::ofDescriptor(slot);
    const std::int64_t size = identity.size;
    if (!identity.isRegular)
        return State::Unreadable;
    if (readAt(0, &start.head, headSize) != headSize)
        return size < headSize ? State::NotWhole : State::Unreadable;
    if (start.head.mark != mark || start.head.length > static_cast<std::uint64_t>(size - headSize))
        return State::NotWhole;
    RecordBytes::Checksum checksum;
    const auto add = [&](std::int64_t, const char* bytes, std::int64_t count) {
        checksum.add(bytes, count);
        return true;
    };
    if (!RecordBytes::forEachBlock(slot, headSize, static_cast<std::int64_t>(start.head.length), add)
        || readAt(headSize, &start.length, lengthSize) != lengthSize)
        return State::Unreadable;
    if (checksum.value() != start.head.checksum || start.length > longestHeader)
        return State::NotWhole;
    QByteArray bytes(static_cast<qsizetype>(start.length), Qt::Uninitialized);
    if (readAt(headSize + lengthSize, bytes.data(), start.length) != start.length)
        return State::Unreadable;
    placeBytes(start.length);
    return parseHeader(bytes) ? (placeBytes(start.length), State::Whole) : State::NotWhole;
}

/// A checksum of what lies around the ranges. @return none when it can't be read.
std::optional<std::uint64_t> UndoRecord::surroundings(int file) const
{
    RecordBytes::Checksum checksum;
    const auto add = [&](std::int64_t, const char* bytes, std::int64_t count) {
        checksum.add(bytes, count);
        return true;
    };
    for (const auto& stretch : around(ranges_, oldSize_)) {
        if (!RecordBytes::forEachBlock(file, stretch.begin, stretch.end - stretch.begin, add))
            return std::nullopt;
    }
    return checksum.value();
}

UndoRecord::Finding UndoRecord::compare(int file) const
{
    const std::int64_t size = FileIdentity::ofDescriptor(file).size;
    if (size < std::min(oldSize_, newSize_) || size > std::max(oldSize_, newSize_))
        return Finding::Different;
    const auto around = surroundings(file);
    if (!around)
        return Finding::Unreadable;
    if (*around != surroundings_)
        return Finding::Different;
    Tally tally{size == oldSize_, size == newSize_};
    for (const auto& range : ranges_) {
        const std::int64_t end = std::min(range.offset + std::max(range.oldLength, range.newLength), size);
        for (std::int64_t offset = range.offset; offset < end; offset += blockSize) {
            const Finding found = compareBlock(file, range, offset, std::min(blockSize, end - offset), tally);
            if (found != Finding::HalfDone)
                return found;
        }
    }
    return tally.isOld ? Finding::Old : (tally.isNew ? Finding::New : Finding::HalfDone);
}

/// @return HalfDone when each byte is an old or a new one.
UndoRecord::Finding UndoRecord::compareBlock(int file, const Range& range, std::int64_t offset, std::int64_t length,
                                             Tally& tally) const
{
    const auto within = [&](std::int64_t rangeLength) {
        return std::clamp<std::int64_t>(range.offset + rangeLength - offset, 0, length);
    };
    const std::int64_t oldLength = within(range.oldLength);
    const std::int64_t newLength = within(range.newLength);
    std::vector<char> bytes(static_cast<std::size_t>(length));
    // A file that grows may have its new length and no bytes there yet.
    std::vector<char> old(bytes.size());
    std::vector<char> fresh(bytes.size());
    if (PosixFile::readAt(file, offset, bytes.data(), bytes.size()) != length
        || !readOld(offset, old.data(), static_cast<std::size_t>(oldLength))
        || !readNew(offset, fresh.data(), newLength))
        return Finding::Unreadable;
    tally.isOld = tally.isOld && bytes == old;
    tally.isNew = tally.isNew && std::equal(bytes.begin(), bytes.begin() + newLength, fresh.begin());
    for (std::int64_t i = 0; i < length; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (bytes[at] != old[at] && !(i < newLength && bytes[at] == fresh[at]))
            return Finding::Different;
    }
    return Finding::HalfDone;
}

bool UndoRecord::readOld(std::int64_t offset, char* into, std::size_t length) const
{
    std::int64_t start = oldBytesStart_;
    for (const auto& range : ranges_) {
        if (offset >= range.offset && offset < range.offset + range.oldLength)
            return PosixFile::readAt(slot_.descriptor(), start + offset - range.offset, into, length)
                   == static_cast<std::int64_t>(length);
        start += range.oldLength;
    }
    return length == 0;
}

bool UndoRecord::readNew(std::int64_t position, char* into, std::int64_t length) const
{
    bool isRead = true;
    for (const auto& part : parts_) {
        const std::int64_t begin = std::max(position, part.position);
        const std::int64_t count = std::min(position + length, part.position + part.length) - begin;
        if (count <= 0)
            continue;
        const std::int64_t offset = part.offset + begin - part.position;
        char* target = into + (begin - position);
        const auto size = static_cast<std::size_t>(count);
        isRead =
            isRead
            && (part.isOld ? readOld(offset, target, size)
                           : PosixFile::readAt(slot_.descriptor(), newBytesStart_ + offset, target, size) == count);
    }
    return isRead;
}

bool UndoRecord::rollBack(int file) const
{
    return writeOld(file) && ::fsync(file) == 0 && PosixFile::flush(file);
}

bool UndoRecord::writeOld(int file) const
{
    std::int64_t start = oldBytesStart_;
    for (const auto& range : ranges_) {
        const std::int64_t shift = range.offset - start;
        const bool done = RecordBytes::forEachBlock(slot_.descriptor(), start, range.oldLength,
                                                    [&](std::int64_t offset, const char* bytes, std::int64_t count) {
                                                        return PosixFile::writeAt(file, offset + shift, bytes,
                                                                                  static_cast<std::size_t>(count));
                                                    });
        if (!done)
            return false;
        start += range.oldLength;
    }
    return FileIdentity::ofDescriptor(file).size == oldSize_ || ::ftruncate(file, oldSize_) == 0;
}
