#pragma once

#include "tagengine/PosixFile.h"

#include <QByteArray>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include <xxhash.h>

/// Reading and writing long runs of bytes, block by block, with a checksum.
namespace RecordBytes {

inline constexpr std::int64_t blockSize = 1 << 20;

/// A running checksum over what passes through it.
class Checksum {
public:
    Checksum() { XXH3_64bits_reset(state_.get()); }
    void add(const char* bytes, std::int64_t length)
    {
        XXH3_64bits_update(state_.get(), bytes, static_cast<std::size_t>(length));
    }
    std::uint64_t value() const { return XXH3_64bits_digest(state_.get()); }

private:
    std::unique_ptr<XXH3_state_t, decltype(&XXH3_freeState)> state_{XXH3_createState(), &XXH3_freeState};
};

/// Calls @p use with offset, bytes and their number, block by block.
/// @return false when a block can't be read or used.
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

/// Writes a file from its start, in few calls.
class Appender {
public:
    /// @param headSize bytes at the start that are left for finish() to fill.
    Appender(int descriptor, std::int64_t headSize) : descriptor_(descriptor), waiting_(headSize, '\0') {}

    bool append(const char* bytes, std::int64_t length)
    {
        checksum_.add(bytes, length);
        length_ += length;
        waiting_.append(bytes, length);
        return waiting_.size() < blockSize || flush();
    }
    std::uint64_t checksum() const { return checksum_.value(); }
    /// The number of bytes behind the head.
    std::int64_t length() const { return length_; }

    bool finish(const char* head, std::int64_t headSize)
    {
        if (position_ > 0)
            return flush() && PosixFile::writeAt(descriptor_, 0, head, static_cast<std::size_t>(headSize));
        std::copy(head, head + headSize, waiting_.begin());
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
    QByteArray waiting_;
    std::int64_t position_ = 0;
    std::int64_t length_ = 0;
    Checksum checksum_;
};

} // namespace RecordBytes
