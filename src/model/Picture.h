#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>

/// Encoded pictures: JPEG, PNG, GIF, BMP, TIFF and WebP, told apart by their content, whatever their name or label.
namespace Picture {

/// The MIME types of the formats above.
const QStringList& mimeTypes();

/// @return "jpeg", "png", "gif", "bmp", "tiff" or "webp"; empty for other bytes.
QByteArray format(const QByteArray& bytes);

/// The stored width and height in pixels, from the header alone. @return an empty size when the bytes are no picture.
QSize size(const QByteArray& bytes);

/// Decodes a picture in sRGB, turned upright where it says how. Refused are pictures of more than 128 megapixels,
/// those that would need more than 240 MB while they are read, and JPEG files of more than 100 scans.
/// @param within the picture is scaled down to fit into this size; an empty size leaves it as it is.
/// @return a null image when it is refused or can't be decoded.
QImage decode(const QByteArray& bytes, const QSize& within = {});

} // namespace Picture
