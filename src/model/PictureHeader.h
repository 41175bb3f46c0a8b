#pragma once

#include <QByteArray>
#include <QSize>
#include <QStringList>

/// Encoded pictures: JPEG, PNG, GIF, BMP, TIFF and WebP, told apart by their content, whatever their name or label.
namespace Picture {

/// The MIME types of the formats above.
const QStringList& mimeTypes();

/// @return "jpeg", "png", "gif", "bmp", "tiff" or "webp"; empty for other bytes.
QByteArray format(const QByteArray& bytes);

/// The stored width and height in pixels, from the header alone. @return an empty size when the bytes are no picture.
QSize size(const QByteArray& bytes);

} // namespace Picture
