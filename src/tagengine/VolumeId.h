#pragma once

#include <QByteArray>

/// What tells the file system that a file lies on from another one that is mounted in the same place later.
namespace VolumeId {

/// @return the UUID of the file system or, where only that is known, what the system makes of it; empty for file systems
/// that have none, and for the kinds whose identity changes with every mount.
QByteArray of(int descriptor);

} // namespace VolumeId
