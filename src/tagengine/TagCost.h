#pragma once

#include <taglib/tbytevector.h>

#include <cstddef>
#include <cstdint>

/// About how many bytes of memory TagLib, and what reads from it, need for parts of a tag. Text grows most: each of many
/// values is an object of its own.
namespace TagCost {

/// Of anything that becomes an object: a frame, an item.
inline constexpr std::size_t object = 600;

/// The encodings as ID3v2 tells them; of other tags, `narrow` fits.
enum class Encoding { Narrow, Wide };

/// @param isList whether zeros part it into values.
std::size_t ofText(const char* begin, const char* end, Encoding encoding = Encoding::Narrow, bool isList = true);

/// @param id of three or four letters. @param begin where the body begins, behind its header.
std::size_t ofFrame(const TagLib::ByteVector& id, const char* begin, const char* end);

/// What ofFrame would say when the content of a frame is compressed; stops expanding beyond @p limit.
std::size_t ofCompressedFrame(const TagLib::ByteVector& id, TagLib::ByteVector body, std::size_t limit);

/// All items of an APE tag.
std::size_t ofApe(const TagLib::ByteVector& items);

/// The atoms inside one item of an MP4 file.
std::size_t ofMp4Item(const TagLib::ByteVector& atoms, bool isPicture);

/// A LIST chunk of the type INFO, from that word on.
std::size_t ofInfo(const TagLib::ByteVector& list);

} // namespace TagCost
