#pragma once

#include <taglib/tiostream.h>

/// The tables of an MP4 file that say where in the file its sound lies (ISO 14496-12: `stco`, `co64`, `tfhd`).
namespace Mp4Offsets {

/// Whether every table is as long as it claims. TagLib adjusts as many entries as a table claims when a save moves the
/// sound, over what lies behind the table if need be.
bool fitTheirTables(TagLib::IOStream& stream);

} // namespace Mp4Offsets
