#pragma once

#include "model/PictureHeader.h"

#include <QImage>

namespace Picture {

/// Decodes a picture in sRGB, turned upright where it says how. Refused are pictures of more than 128 megapixels,
/// those that would need more than 240 MB while they are read, and JPEG files of more than 100 scans.
/// @param within the picture is scaled down to fit into this size; an empty size leaves it as it is.
/// @return a null image when it is refused or can't be decoded.
QImage decode(const QByteArray& bytes, const QSize& within = {});

/// Whether a picture that can be decoded scaled down is not refused in its full size.
bool canBeDecodedWhole(const QByteArray& bytes);

} // namespace Picture
