#include "model/ImageMeasure.h"

#include <QBuffer>
#include <QImageReader>

#include <xxhash.h>

#include <algorithm>
#include <limits>

namespace {

bool isImage(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    if (reader.supportsOption(QImageIOHandler::Size))
        return !reader.size().isEmpty();
    return reader.canRead();
}

} // namespace

qint64 measureImage(const QByteArray& bytes)
{
    if (bytes.isEmpty() || !isImage(bytes))
        return 0;
    const XXH64_hash_t hash = XXH3_64bits(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return std::max<qint64>(1, static_cast<qint64>(hash & std::numeric_limits<qint64>::max()));
}
