#pragma once

#include <taglib/tiostream.h>

/// Changes to the content of a stream that touch no more of it than they must.
namespace StreamPatch {

/// Puts bytes in the place of others. What both have in common at either end stays the file's own.
/// @param old what the stream holds at @p begin.
void replace(TagLib::IOStream& stream, TagLib::offset_t begin, const TagLib::ByteVector& old,
             const TagLib::ByteVector& bytes);

} // namespace StreamPatch
