#include "artwork/GifEncoder.h"
#include "artwork/ImageFormats.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>

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
