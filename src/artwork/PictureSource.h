#pragma once

#include "platform/DroppedData.h"

/// The pictures that a drag or the clipboard carries.
namespace PictureSource {

/// Whether there is an image file or image data, without asking the source for it.
bool hasPicture(const QMimeData& data);

/// The local image files, judged by name and content.
QStringList files(const QMimeData& data);

/// Image data without a file: JPEG or PNG, unchanged, where the source offers them; otherwise another encoded format;
/// otherwise a bare image, encoded as PNG.
std::optional<DroppedData::Data> readData(const QMimeData& data);

} // namespace PictureSource
