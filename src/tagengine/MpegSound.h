#pragma once

#include <taglib/tfile.h>

/// Where MPEG sound lies, told from its frames alone.
namespace MpegSound {

/// Whether sound goes on from one side of a place to the other. @param file any that can be read.
/// @param before how many of its frames have to begin in front of that place, for each of which that is less likely to be
/// by chance; two do so behind it.
bool runsAcross(TagLib::File& file, TagLib::offset_t place, int before);

/// Whether three frames of sound follow each other from one place to another.
bool liesWithin(TagLib::File& file, TagLib::offset_t begin, TagLib::offset_t end);

} // namespace MpegSound
