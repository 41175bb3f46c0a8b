#include "tagengine/BlockReader.h"

#include "tagengine/PosixFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

std::size_t BlockReader::read(std::int64_t offset, char* into, std::size_t length)
{
    if (length >= blockSize)
        return readDirectly(offset, into, length);
    std::size_t done = 0;
    while (done < length) {
        const auto position = static_cast<std::size_t>(offset) + done;
        const Block& from = block(static_cast<std::int64_t>(position / blockSize));
        const std::size_t start = position % blockSize;
        if (start >= from.length)
            break;
        const std::size_t count = std::min(length - done, from.length - start);
        std::memcpy(into + done, from.bytes.get() + start, count);
        done += count;
    }
    return done;
}

const BlockReader::Block& BlockReader::block(std::int64_t index)
{
    Block& slot = blocks_[static_cast<std::size_t>(index) % blockCount];
    if (slot.index != index) {
        if (!slot.bytes)
            slot.bytes = std::make_unique_for_overwrite<char[]>(blockSize);
        slot.length = readDirectly(index * static_cast<std::int64_t>(blockSize), slot.bytes.get(), blockSize);
        slot.index = index;
    }
    return slot;
}

std::size_t BlockReader::readDirectly(std::int64_t offset, char* into, std::size_t length)
{
    // Asked for more than there is, the system would have to be called once more to say that there is no more.
    const std::int64_t wanted = std::clamp<std::int64_t>(size_ - offset, 0, static_cast<std::int64_t>(length));
    const std::int64_t count = PosixFile::readAt(descriptor_, offset, into, static_cast<std::size_t>(wanted));
    // What the size promised and is not there must not be taken for the end of the tags.
    if (count < wanted && error_ == 0)
        error_ = count < 0 ? errno : EIO;
    return static_cast<std::size_t>(std::max<std::int64_t>(count, 0));
}
