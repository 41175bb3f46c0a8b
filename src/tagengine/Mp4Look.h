#pragma once

class SafeFileStream;

/// A look at an MP4 file whose tags were changed, before it is written. It shares nothing with what changed the file but the
/// headers of atoms.
namespace Mp4Look {

/// Every place that the file tells (`stco`, `co64`, `saio`, `tfhd`, `trun`, `tfra`, `sidx`, `iloc`) must hold what it does in
/// the file as it is, and all sound must lie in whole atoms of its own, where no tag reaches. What has not changed is not
/// looked at.
/// @return the reason not to write it (see FailureReason); null when there is none.
const char* reasonAgainst(SafeFileStream& stream);

} // namespace Mp4Look
