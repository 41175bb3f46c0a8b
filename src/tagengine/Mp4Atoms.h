#pragma once

#include <taglib/tiostream.h>

#include <cstdint>
#include <vector>

/// Where an atom of an MP4 file lies.
struct Mp4Atom {
    TagLib::ByteVector name;
    std::int64_t offset = 0;
    std::int64_t length = 0;
    std::int64_t contents = 0; ///< where these begin

    std::int64_t end() const { return offset + length; }
};

/// The atoms that MP4 files consist of (ISO 14496-12: boxes).
namespace Mp4Atoms {

inline constexpr std::int64_t headerSize = 8;
inline constexpr std::int64_t largeHeaderSize = 16;

/// The atom at a place, as it says itself: it may be shorter than its header, or longer than there is room for.
/// @param end where it ends if it says that it takes all that is left.
Mp4Atom read(TagLib::IOStream& stream, std::int64_t offset, std::int64_t end);

/// The whole atoms from one place to another, up to the first that is not whole.
std::vector<Mp4Atom> list(TagLib::IOStream& stream, std::int64_t begin, std::int64_t end);

/// Where the atoms begin that a container holds. QuickTime's `meta` has no version and flags in front of them.
std::int64_t childrenOf(TagLib::IOStream& stream, const Mp4Atom& atom);

/// Makes an atom longer by some bytes (or shorter) in its header.
/// @return false when the header can't hold the new length.
bool resize(TagLib::IOStream& stream, const Mp4Atom& atom, std::int64_t delta);

/// An atom's bytes.
TagLib::ByteVector make(const TagLib::ByteVector& name, const TagLib::ByteVector& contents);

} // namespace Mp4Atoms
