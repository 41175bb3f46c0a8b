#include "model/Picture.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>

#include <algorithm>
#include <new>

namespace {

constexpr qint64 mostPixels = 128'000'000;
constexpr qint64 mostMemory = 240'000'000;
constexpr int mostMegabytesAtOnce = 256;
constexpr qsizetype mostScans = 100;
constexpr int bytesPerPixel = 4;

/// What a JPEG file (ITU T.81) says about itself before and between its scans.
class JpegStructure {
public:
    explicit JpegStructure(const QByteArray& bytes) : bytes_(bytes)
    {
        for (qsizetype at = nextMarker(2); at >= 0 && byte(at) != endOfImage && scans_ <= mostScans;)
            at = nextMarker(takeSegment(at));
    }

    /// A decoder keeps such a picture whole, at two bytes a value.
    bool isReadInPieces() const { return isBaseline_ && scans_ > 0 && componentsOfFirstScan_ == components_; }
    int components() const { return components_; }
    qsizetype scans() const { return scans_; }

private:
    static constexpr int startOfScan = 0xda;
    static constexpr int endOfImage = 0xd9;

    int byte(qsizetype at) const { return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0; }

    /// @return where the code of the next marker is, behind its 0xff; -1 for none.
    qsizetype nextMarker(qsizetype at) const
    {
        for (at = bytes_.indexOf('\xff', at); at >= 0; at = bytes_.indexOf('\xff', at + 1)) {
            const int code = byte(at + 1);
            const bool standsAlone = code <= 0x01 || code == 0xff || (code >= 0xd0 && code <= 0xd8);
            if (!standsAlone)
                return at + 1;
        }
        return -1;
    }

    /// @return where the segment ends.
    qsizetype takeSegment(qsizetype at)
    {
        const int code = byte(at);
        const bool isFrame = code >= 0xc0 && code <= 0xcf && code != 0xc4 && code != 0xc8 && code != 0xcc;
        if (isFrame) {
            isBaseline_ = code == 0xc0 || code == 0xc1;
            components_ = byte(at + 8);
        } else if (code == startOfScan && ++scans_ == 1) {
            componentsOfFirstScan_ = byte(at + 3);
        }
        return at + 1 + byte(at + 1) * 256 + byte(at + 2);
    }

    const QByteArray& bytes_;
    bool isBaseline_ = false;
    int components_ = 0;
    int componentsOfFirstScan_ = 0;
    qsizetype scans_ = 0;
};

/// Whether a PNG file (ISO 15948) is of the kind that is scaled line by line: 8 bits, true colour, not interlaced.
bool isPngReadInLines(const QByteArray& bytes)
{
    constexpr int depthAt = 24;
    constexpr int colourTypeAt = 25;
    constexpr int interlaceAt = 28;
    return bytes.size() > interlaceAt && bytes[depthAt] == 8 && (bytes[colourTypeAt] == 2 || bytes[colourTypeAt] == 6)
           && bytes[interlaceAt] == 0;
}

bool isTooCostly(const QByteArray& bytes, const QByteArray& format, const QSize& size, bool scaled)
{
    const qint64 pixels = qint64(size.width()) * size.height();
    const qint64 whole = pixels * bytesPerPixel;
    qint64 memory = whole;
    if (format == "jpeg") {
        const JpegStructure jpeg(bytes);
        const qint64 kept = jpeg.isReadInPieces() ? 0 : pixels * 2 * std::max(jpeg.components(), 3);
        memory = kept + (scaled ? 0 : whole);
        if (jpeg.scans() > mostScans)
            return true;
    } else if (format == "png") {
        constexpr int deepestPng = 2;
        memory = isPngReadInLines(bytes) ? (scaled ? 0 : whole) : deepestPng * whole;
    }
    return pixels > mostPixels || memory > mostMemory;
}

/// A reader of bytes that are looked at as what they start like, and as nothing else.
class Reader {
public:
    explicit Reader(const QByteArray& bytes)
    {
        const QByteArray format = Picture::format(bytes);
        if (format.isEmpty())
            return;
        buffer_.setData(bytes);
        buffer_.open(QIODevice::ReadOnly);
        reader_.setDevice(&buffer_);
        reader_.setAutoDetectImageFormat(false);
        reader_.setFormat(format);
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

QImage decodeWithin(const QByteArray& bytes, const QSize& within)
{
    using namespace Picture;
    QImageReader::setAllocationLimit(mostMegabytesAtOnce);
    Reader reader(bytes);
    // Qt would read a GIF to its end.
    const QSize stored = format(bytes) == "gif" ? size(bytes) : reader.size();
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

} // namespace

QImage Picture::decode(const QByteArray& bytes, const QSize& within)
{
    // A picture that is too much for this machine must not end the program, nor the thread that decodes.
    try {
        return decodeWithin(bytes, within);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

bool Picture::canBeDecodedWhole(const QByteArray& bytes)
{
    // No format needs more; with that much to spare, a file need not be searched for how it is built.
    constexpr int mostBytesPerPixel = 12;
    const QSize stored = size(bytes);
    return qint64(stored.width()) * stored.height() * mostBytesPerPixel <= mostMemory
           || !isTooCostly(bytes, format(bytes), stored, false);
}
