#include "model/Picture.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>

#include <array>

namespace {

struct Format {
    const char* name;
    const char* mimeType;
    /// The bytes at offset 0, and those at offset 8.
    QByteArrayView start;
    QByteArrayView atEight;
};

constexpr std::array formats{
    Format{"jpeg", "image/jpeg", "\xff\xd8\xff", ""}, Format{"png", "image/png", "\x89PNG\r\n\x1a\n", ""},
    Format{"gif", "image/gif", "GIF8", ""},           Format{"bmp", "image/bmp", "BM", ""},
    Format{"tiff", "image/tiff", {"II*\0", 4}, ""},   Format{"tiff", "image/tiff", {"MM\0*", 4}, ""},
    Format{"webp", "image/webp", "RIFF", "WEBP"},
};

constexpr qint64 megapixel = 1'000'000;
constexpr qint64 mostPixels = 40 * megapixel;
constexpr qint64 mostPixelsWhenStreamed = 128 * megapixel;
constexpr qsizetype mostScans = 100;

const Format* formatOf(const QByteArray& bytes)
{
    for (const auto& format : formats) {
        if (bytes.startsWith(format.start) && bytes.mid(8, format.atEight.size()) == format.atEight)
            return &format;
    }
    return nullptr;
}

/// Whether a JPEG's frame header is one of the progressive kinds, for which a decoder keeps the whole picture.
bool isProgressiveJpeg(const QByteArray& bytes)
{
    const auto byte = [&](qsizetype at) { return static_cast<unsigned char>(bytes[at]); };
    for (qsizetype at = 2; at + 4 <= bytes.size() && byte(at) == 0xff;) {
        const int marker = byte(at + 1);
        const bool isFrame = marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
        if (isFrame)
            return (marker & 3) == 2;
        at += marker == 0xff ? 1 : 2 + byte(at + 2) * 256 + byte(at + 3);
    }
    return false;
}

bool isTooCostly(const QByteArray& bytes, const QByteArray& format, const QSize& size, bool scaled)
{
    const bool isJpeg = format == "jpeg";
    if (isJpeg && bytes.count("\xff\xda") > mostScans)
        return true;
    const bool streamed = scaled && (format == "png" || (isJpeg && !isProgressiveJpeg(bytes)));
    return qint64(size.width()) * size.height() > (streamed ? mostPixelsWhenStreamed : mostPixels);
}

/// A reader of bytes that are looked at as what they start like, and as nothing else.
class Reader {
public:
    explicit Reader(const QByteArray& bytes)
    {
        const Format* format = formatOf(bytes);
        if (!format)
            return;
        buffer_.setData(bytes);
        buffer_.open(QIODevice::ReadOnly);
        reader_.setDevice(&buffer_);
        reader_.setAutoDetectImageFormat(false);
        reader_.setFormat(format->name);
        reader_.setAutoTransform(true);
    }
    QSize size() { return reader_.device() ? reader_.size() : QSize(); }
    QImageReader* operator->() { return &reader_; }

private:
    QBuffer buffer_;
    QImageReader reader_;
};

QSize fitted(const QSize& stored, QSize within, QImageIOHandler::Transformations transformation)
{
    if (transformation & QImageIOHandler::TransformationRotate90)
        within.transpose();
    if (stored.width() <= within.width() && stored.height() <= within.height())
        return stored;
    return stored.scaled(within, Qt::KeepAspectRatio).expandedTo({1, 1});
}

} // namespace

const QStringList& Picture::mimeTypes()
{
    static const QStringList types = [] {
        QStringList names;
        for (const auto& format : formats)
            names.append(QLatin1String(format.mimeType));
        names.removeDuplicates();
        return names;
    }();
    return types;
}

QByteArray Picture::format(const QByteArray& bytes)
{
    const Format* format = formatOf(bytes);
    return format ? QByteArray(format->name) : QByteArray();
}

QSize Picture::size(const QByteArray& bytes)
{
    return Reader(bytes).size();
}

QImage Picture::decode(const QByteArray& bytes, const QSize& within)
{
    Reader reader(bytes);
    const QSize stored = reader.size();
    if (stored.isEmpty() || isTooCostly(bytes, format(bytes), stored, !within.isEmpty()))
        return {};
    if (!within.isEmpty()) {
        const QSize wanted = fitted(stored, within, reader->transformation());
        if (wanted != stored)
            reader->setScaledSize(wanted);
    }
    QImage picture = reader->read();
    if (picture.colorSpace().isValid() && picture.colorSpace() != QColorSpace(QColorSpace::SRgb))
        picture.convertToColorSpace(QColorSpace::SRgb);
    return picture;
}
