#pragma once

#include <QByteArray>
#include <QString>

/// A 63-bit measure of a picture's encoded bytes, by which the artwork of records is compared: equal bytes measure
/// equally, different pictures differently. Only the picture's header is looked at, nothing is decoded.
/// @return 0 when the bytes are not recognised as an image; positive otherwise.
qint64 measureImage(const QByteArray& bytes);

/// The same for the picture that the file at @p path holds now. @param type see TaglibWrapper::getImageData.
qint64 measureImageIn(const QString& path, const QString& type);
