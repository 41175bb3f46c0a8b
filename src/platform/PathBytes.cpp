#include "platform/PathBytes.h"

#include <algorithm>

namespace {

constexpr char16_t escapeBase = 0xdc00;
constexpr char16_t firstEscape = 0xdc80;
constexpr char16_t lastEscape = 0xdcff;

bool isEscape(const QString& path, qsizetype at)
{
    const char16_t unit = path[at].unicode();
    return unit >= firstEscape && unit <= lastEscape && (at == 0 || !path[at - 1].isHighSurrogate());
}

qsizetype nextEscape(const QString& path, qsizetype from)
{
    while (from < path.size() && !isEscape(path, from))
        ++from;
    return from;
}

/// The number of bytes of the UTF-8 character at @p at (RFC 3629); 0 when there is none.
qsizetype characterAt(const QByteArray& bytes, qsizetype at)
{
    constexpr qsizetype longest = 4;
    for (qsizetype length = 1; length <= longest && at + length <= bytes.size(); ++length) {
        if (QUtf8StringView(bytes.constData() + at, length).isValidUtf8())
            return length;
    }
    return 0;
}

} // namespace

QString PathBytes::decode(const QByteArray& bytes)
{
    if (bytes.isValidUtf8())
        return QString::fromUtf8(bytes);
    QString path;
    for (qsizetype at = 0; at < bytes.size();) {
        const qsizetype length = characterAt(bytes, at);
        if (length > 0)
            path += QString::fromUtf8(bytes.constData() + at, length);
        else
            path += QChar(char16_t(escapeBase + static_cast<unsigned char>(bytes[at])));
        at += std::max<qsizetype>(length, 1);
    }
    return path;
}

QByteArray PathBytes::encode(const QString& path)
{
    QByteArray bytes;
    for (qsizetype at = 0; at < path.size();) {
        const qsizetype escape = nextEscape(path, at);
        bytes += QStringView(path).sliced(at, escape - at).toUtf8();
        if (escape < path.size())
            bytes += static_cast<char>(path[escape].unicode() - escapeBase);
        at = escape + 1;
    }
    return bytes;
}

bool PathBytes::isPlain(const QString& path)
{
    return nextEscape(path, 0) == path.size();
}

QUrl PathBytes::toUrl(const QString& path)
{
    return isPlain(path) ? QUrl::fromLocalFile(path)
                         : QUrl::fromEncoded("file://" + encode(path).toPercentEncoding("/"));
}

QString PathBytes::fromUrl(const QUrl& url)
{
    const QByteArray encoded = url.path(QUrl::FullyEncoded).toLatin1();
    const QString path = decode(QByteArray::fromPercentEncoding(encoded));
    return isPlain(path) ? url.toLocalFile() : path;
}
