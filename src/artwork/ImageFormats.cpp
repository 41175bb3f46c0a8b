#include "artwork/ImageFormats.h"

#include "artwork/GifEncoder.h"
#include "platform/UserDefaults.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>

#include <algorithm>

namespace {

enum Index { Jpeg, Png, Tiff, Gif, Bmp };

constexpr int bestQuality = 100;

QImage onWhite(const QImage& image)
{
    if (!image.hasAlphaChannel())
        return image;
    QImage flat(image.size(), QImage::Format_RGB32);
    flat.fill(Qt::white);
    QPainter(&flat).drawImage(0, 0, image);
    return flat;
}

std::optional<QByteArray> write(const QImage& image, const char* format, int quality = -1)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    return writer.write(image) ? std::optional(bytes) : std::nullopt;
}

} // namespace

const QStringList& ImageFormats::extensions()
{
    static const QStringList names{QStringLiteral("jpg"), QStringLiteral("png"), QStringLiteral("tiff"),
                                   QStringLiteral("gif"), QStringLiteral("bmp")};
    return names;
}

QStringList ImageFormats::allowedExtensions(int format)
{
    const QString extension = extensions().value(format);
    return format == Jpeg ? QStringList{QStringLiteral("jpeg"), extension} : QStringList{extension};
}

const QStringList& ImageFormats::mimeTypes()
{
    static const QStringList types{QStringLiteral("image/jpeg"), QStringLiteral("image/png"),
                                   QStringLiteral("image/tiff"), QStringLiteral("image/gif"),
                                   QStringLiteral("image/bmp")};
    return types;
}

const QStringList& ImageFormats::titles()
{
    static const QStringList names{QStringLiteral("JPEG (*.jpeg)"), QStringLiteral("PNG (*.png)"),
                                   QStringLiteral("TIFF (*.tiff)"), QStringLiteral("GIF (*.gif)"),
                                   QStringLiteral("BMP (*.bmp)")};
    return names;
}

int ImageFormats::indexForExtension(const QString& extension)
{
    return std::max<int>(Jpeg, static_cast<int>(extensions().indexOf(extension)));
}

int ImageFormats::storedIndex(const UserDefaults& defaults)
{
    const int index = defaults.intForKey(DefaultsKey::fileTypeIndex);
    return index >= Jpeg && index <= Bmp ? index : Jpeg;
}

std::optional<QByteArray> ImageFormats::encode(const QImage& image, int format)
{
    if (image.isNull())
        return std::nullopt;
    switch (format) {
    case Png:
        return write(image, "png");
    case Tiff:
        return write(image, "tiff");
    case Gif:
        return GifEncoder::encode(image);
    case Bmp:
        return write(onWhite(image).convertToFormat(QImage::Format_RGB888), "bmp");
    default:
        return write(onWhite(image), "jpeg", bestQuality);
    }
}
