#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

class QImage;
class UserDefaults;

/// The five formats in which cover art is saved, one index running through all tables:
/// 0 JPEG, 1 PNG, 2 TIFF, 3 GIF, 4 BMP.
namespace ImageFormats {

/// "jpg", "png", "tiff", "gif", "bmp": what a chosen image file may be called, exactly.
const QStringList& extensions();
/// What a file saved in the format may be called; the first is the usual one: "jpeg" or "jpg", "png", "tiff" or "tif",
/// "gif", "bmp".
QStringList allowedExtensions(int format);
const QStringList& mimeTypes();
/// "JPEG (*.jpeg)" and so on.
const QStringList& titles();

/// The format that a file of this extension is written in; JPEG for an extension that is in no table.
int indexForExtension(const QString& extension);

/// The format that the user chose last; one that does not exist counts as JPEG.
int storedIndex(const UserDefaults& defaults);

/// Encodes a picture at the best quality of the format. GIF, PNG and TIFF keep transparency; JPEG and BMP get white
/// behind it.
/// @return none when it can't be encoded.
std::optional<QByteArray> encode(const QImage& image, int format);

} // namespace ImageFormats
