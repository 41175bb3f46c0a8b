#pragma once

class SafeFileStream;

/// A look at a WAV or AIFF file whose tags were changed, before it is written. It shares nothing with what changed the file.
namespace RiffLook {

/// The chunks of the file as it is must be whole, with sound among them; all that hold no tags must stay as they are, and the
/// file's own length must be true. What has not changed is not looked at.
/// @return the reason not to write it (see FailureReason); null when there is none.
const char* reasonAgainst(SafeFileStream& stream);

} // namespace RiffLook
