#pragma once

#include <taglib/tbytevector.h>

#include <cstdint>
#include <vector>

/// Looks at what TagLib reads from a file before TagLib does, for content that would exhaust the stack or the memory:
/// atoms or chapters nested in each other by the thousand, and compressed frames that expand without end.
class ReadGuard {
public:
    /// @return whether TagLib may see these bytes, which it asked for at that place of the file.
    bool accepts(std::int64_t offset, const TagLib::ByteVector& bytes);

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

private:
    Nesting atoms_;
    TagLib::ByteVector tagHeader_; ///< of the ID3v2 tag whose header was read last
    std::int64_t framesStart_ = -1;
};
