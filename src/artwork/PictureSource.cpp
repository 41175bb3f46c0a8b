#include "artwork/PictureSource.h"

#include "model/Picture.h"

#include <QBuffer>
#include <QImage>

namespace {

const QStringList& preferredTypes()
{
    static const QStringList types{QStringLiteral("image/jpeg"), QStringLiteral("image/png")};
    return types;
}

QByteArray asPng(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return bytes;
}

} // namespace

bool PictureSource::hasPicture(const QMimeData& data)
{
    return data.hasImage() || DroppedData::offersData(data, Picture::mimeTypes()) || !files(data).isEmpty();
}

QStringList PictureSource::files(const QMimeData& data)
{
    return DroppedData::localFilesOfType(data, Picture::mimeTypes());
}

std::optional<DroppedData::Data> PictureSource::readData(const QMimeData& data)
{
    for (const auto& types : {preferredTypes(), Picture::mimeTypes()}) {
        if (auto found = DroppedData::readData(data, types))
            return found;
    }
    const QByteArray png = asPng(qvariant_cast<QImage>(data.imageData()));
    return png.isEmpty() ? std::nullopt : std::optional(DroppedData::Data{png, QStringLiteral("image.png")});
}
