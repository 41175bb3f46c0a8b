#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

/// Writes GIF89a files.
namespace GifEncoder {

/// One still picture with the best palette of up to 256 colours for it, dithered where that does not suffice.
/// Pixels are either opaque or, below half opacity, transparent.
/// @return none when the picture is empty, wider or higher than 65,535 pixels, or memory does not suffice.
std::optional<QByteArray> encode(const QImage& image);

} // namespace GifEncoder
