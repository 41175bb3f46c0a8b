#include "tagengine/OlderRecord.h"

#include "tagengine/RecordBytes.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>

#include <unistd.h>

namespace {

constexpr quint32 mark = 0x536f5675;
constexpr std::int64_t lengthSize = sizeof(quint32);
constexpr std::int64_t checksumSize = sizeof(std::uint64_t);
constexpr std::int64_t longestHeader = 1 << 20;
constexpr std::int64_t longestPatch = 1'000'000'000;    // nanoseconds
constexpr std::int64_t longestRewrite = 10'000'000'000; // nanoseconds

} // namespace

std::pair<OlderRecord, OlderRecord::State> OlderRecord::load(RecordSlots::Slot slot)
{
    OlderRecord record(std::move(slot));
    const State state = record.read();
    return {std::move(record), state};
}

OlderRecord::State OlderRecord::read()
{
    const int slot = slot_.descriptor();
    const FileIdentity identity = FileIdentity::ofDescriptor(slot);
    const std::int64_t size = identity.size;
    quint32 length = 0;
    if (size < lengthSize)
        return identity.isRegular ? State::NotWhole : State::Unreadable;
    if (PosixFile::readAt(slot, 0, reinterpret_cast<char*>(&length), lengthSize) != lengthSize)
        return State::Unreadable;
    if (length > std::min(longestHeader, size - lengthSize))
        return State::NotWhole;
    QByteArray header(static_cast<qsizetype>(length), Qt::Uninitialized);
    if (PosixFile::readAt(slot, lengthSize, header.data(), length) != length)
        return State::Unreadable;
    oldBytesStart_ = lengthSize + length;
    if (!parseHeader(header) || size != oldBytesStart_ + oldLength() + checksumSize)
        return State::NotWhole;
    const std::int64_t contentLength = size - checksumSize;
    RecordBytes::Checksum checksum;
    std::uint64_t stored = 0;
    const auto add = [&](std::int64_t, const char* bytes, std::int64_t count) {
        checksum.add(bytes, count);
        return true;
    };
    if (!RecordBytes::forEachBlock(slot, 0, contentLength, add)
        || PosixFile::readAt(slot, contentLength, reinterpret_cast<char*>(&stored), checksumSize) != checksumSize)
        return State::Unreadable;
    return stored == checksum.value() ? State::Whole : State::NotWhole;
}

bool OlderRecord::parseHeader(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    quint32 found = 0;
    quint32 count = 0;
    quint64 device = 0;
    quint64 inode = 0;
    qint64 birth = 0;
    qint64 size = 0;
    stream >> found >> path_ >> device >> inode >> birth >> size >> count;
    for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
        qint64 offset = 0;
        qint64 length = 0;
        stream >> offset >> length;
        ranges_.push_back({offset, length});
    }
    identity_.device = device;
    identity_.inode = inode;
    identity_.birth = birth;
    identity_.size = size;
    return found == mark && stream.status() == QDataStream::Ok
           && std::all_of(ranges_.begin(), ranges_.end(),
                          [](const Range& range) { return range.offset >= 0 && range.length >= 0; });
}

bool OlderRecord::fits(int file) const
{
    const FileIdentity now = FileIdentity::ofDescriptor(file);
    const std::int64_t written = FileIdentity::ofDescriptor(slot_.descriptor()).modified;
    const bool isSame = identity_.birth != 0 && now.birth == identity_.birth && now.inode == identity_.inode
                        && now.device == identity_.device;
    // Only what moved the end of a file was recorded up to there.
    const bool isRewrite = ranges_.size() == 1 && ranges_.front().offset + ranges_.front().length == identity_.size;
    const bool fitsSize = now.size == identity_.size || (isRewrite && now.size >= ranges_.front().offset);
    return isSame && fitsSize && now.modified <= written + (isRewrite ? longestRewrite : longestPatch);
}

std::int64_t OlderRecord::oldLength() const
{
    std::int64_t length = 0;
    for (const auto& range : ranges_)
        length += range.length;
    return length;
}

bool OlderRecord::writeOld(int file) const
{
    std::int64_t start = oldBytesStart_;
    for (const auto& range : ranges_) {
        const std::int64_t shift = range.offset - start;
        const auto write = [&](std::int64_t offset, const char* bytes, std::int64_t count) {
            return PosixFile::writeAt(file, offset + shift, bytes, static_cast<std::size_t>(count));
        };
        if (!RecordBytes::forEachBlock(slot_.descriptor(), start, range.length, write))
            return false;
        start += range.length;
    }
    return FileIdentity::ofDescriptor(file).size == identity_.size || ::ftruncate(file, identity_.size) == 0;
}
