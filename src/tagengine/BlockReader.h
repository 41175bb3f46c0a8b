#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

/// Reads a file through a small cache of blocks: parsing a tag takes many reads of a few bytes, most of them near each
/// other, and each would otherwise cost a system call.
class BlockReader {
public:
    /// @param descriptor stays the caller's and must outlive the reader; the file must not change meanwhile.
    /// @param size the file's.
    BlockReader(int descriptor, std::int64_t size) : descriptor_(descriptor), size_(size) {}

    /// @return the number of bytes read; fewer than @p length at the end of the file or after an error.
    std::size_t read(std::int64_t offset, char* into, std::size_t length);

    /// The errno value of the first read that failed, by an error or by ending before the file does; 0 for none so far.
    int error() const { return error_; }

private:
    static constexpr std::size_t blockSize = 8 * 1024;
    static constexpr std::size_t blockCount = 16;

    struct Block {
        std::int64_t index = -1;
        std::size_t length = 0;
        std::unique_ptr<char[]> bytes;
    };

    const Block& block(std::int64_t index);
    std::size_t readDirectly(std::int64_t offset, char* into, std::size_t length);

    int descriptor_;
    std::int64_t size_;
    int error_ = 0;
    std::array<Block, blockCount> blocks_;
};
