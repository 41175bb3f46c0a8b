#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

/// File names as text. A name is any bytes to the system; those that are UTF-8 are the text that they stand for, and
/// each byte that is not becomes a lone surrogate from U+DC80 to U+DCFF, so that every name comes back as it was.
namespace PathBytes {

QString decode(const QByteArray& bytes);
QByteArray encode(const QString& path);

/// Whether the name is UTF-8, so that every program reads it in the same way.
bool isPlain(const QString& path);

/// The `file:` address (RFC 8089) of a path, and the path of such an address.
QUrl toUrl(const QString& path);
QString fromUrl(const QUrl& url);

} // namespace PathBytes
