#pragma once

#include <taglib/tiostream.h>

#include <cstdint>

/// The tables of an MP4 file that say where in the file its sound lies (ISO 14496-12: `stco`, `co64`, `saio`, `tfhd`,
/// `tfra`).
namespace Mp4Offsets {

/// Whether every table is as long as it claims.
bool fitTheirTables(TagLib::IOStream& stream);

/// Moves what the tables say lies at a place or behind it. The tables themselves are where they were.
/// @return false when a table can't hold a new place; some are changed then.
bool move(TagLib::IOStream& stream, std::int64_t from, std::int64_t delta);

} // namespace Mp4Offsets
