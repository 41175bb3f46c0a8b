#pragma once

#include <QByteArray>

/// A 63-bit measure of a picture's encoded bytes, by which the artwork of records is compared: equal bytes measure
/// equally, different pictures differently. Only the picture's header is looked at, nothing is decoded.
/// @return 0 when the bytes are not recognised as an image; positive otherwise.
qint64 measureImage(const QByteArray& bytes);
