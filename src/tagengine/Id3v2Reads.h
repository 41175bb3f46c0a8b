#pragma once

#include <taglib/tfile.h>
#include <taglib/tstring.h>

#include <optional>

/// What an ID3v2 tag says where TagLib's own reading is another.
namespace Id3v2Reads {

/// The comment of a file with COMM frames: the first one without a description, whatever its language; what programs keep
/// in described ones is none. Older tags are asked where there is no such frame.
/// @return none for a file whose tag has no COMM frame.
std::optional<TagLib::String> comment(TagLib::File& file);

/// The year of an ID3v2.4 tag that has the frame of older versions (TYER) alone. @return none for other tags.
std::optional<unsigned int> oldYear(TagLib::File& file);

} // namespace Id3v2Reads
