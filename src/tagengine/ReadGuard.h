#pragma once

#include <taglib/tbytevector.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// Looks at what TagLib reads from a file before TagLib does, for content that would exhaust the stack, the memory or
/// the user: atoms or chapters nested in each other by the thousand, compressed frames that expand without end, parts or
/// values by the million, and long searches for sound where there is none.
class ReadGuard {
public:
    /// @return whether TagLib may see these bytes, which it asked for at that place of the file. Reading the file again
    /// from its start is a new reading.
    bool accepts(std::int64_t offset, const TagLib::ByteVector& bytes);

    /// @return whether this read, which comes next, goes on with a search for sound that has led nowhere for so long that
    /// it is to find the end of the file.
    bool endsSearch(std::int64_t offset, std::size_t length);

    /// How deep the parts of a file lie in each other, told from where each begins and ends.
    class Nesting {
    public:
        /// Parts have to be entered in the order in which they begin; an earlier beginning starts anew.
        /// @return false when it is too deep.
        bool enter(std::int64_t begin, std::int64_t end);

    private:
        struct Part {
            std::int64_t begin;
            std::int64_t end;
        };
        std::vector<Part> parts_;
    };

    /// The memory that may be spent on something: so much at least, and so many times what it takes up in the file.
    class Budget {
    public:
        void grow(std::size_t size) { allowed_ += 8 * size; }
        bool spend(std::size_t cost) { return (spent_ += cost) <= allowed_; }
        std::size_t left() const { return spent_ < allowed_ ? allowed_ - spent_ : 0; }

    private:
        std::size_t allowed_ = 32 << 20;
        std::size_t spent_ = 0;
    };

private:
    bool acceptsPart(std::int64_t offset, const TagLib::ByteVector& bytes);
    bool acceptsTag(std::int64_t offset, const TagLib::ByteVector& bytes);

    Nesting atoms_;
    Budget parts_;
    Budget tags_;
    TagLib::ByteVector tagHeader_; ///< of the ID3v2 tag whose header was read last
    std::int64_t framesStart_ = -1;
    std::int64_t pictureStart_ = -1; ///< of the item that holds an MP4 file's pictures
    bool apeFollows_ = false;
    std::int64_t searchedAt_ = -1; ///< the block that was searched last
    int blocksSearched_ = 0;
};
