#include "model/ImageMeasure.h"

#include "model/PictureHeader.h"
#include "tagengine/TaglibWrapper.h"

#include <xxhash.h>

#include <algorithm>
#include <limits>

qint64 measureImage(const QByteArray& bytes)
{
    if (Picture::size(bytes).isEmpty())
        return 0;
    const XXH64_hash_t hash = XXH3_64bits(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return std::max<qint64>(1, static_cast<qint64>(hash & std::numeric_limits<qint64>::max()));
}

qint64 measureImageIn(const QString& path, const QString& type)
{
    return measureImage(TaglibWrapper::getImageData(path, type).value_or(QByteArray()));
}
