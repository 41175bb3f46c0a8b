#include "model/PictureHeader.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>

namespace {

/// Numbers out of encoded bytes; what lies outside of them reads as 0.
class Numbers {
public:
    Numbers(const QByteArray& bytes, bool bigEndian) : bytes_(bytes), bigEndian_(bigEndian) {}

    quint8 u8(qsizetype at) const { return read<quint8>(at); }
    quint16 u16(qsizetype at) const { return read<quint16>(at); }
    quint32 u24(qsizetype at) const { return u16(at) + (u8(at + 2) << 16); }
    quint32 u32(qsizetype at) const { return read<quint32>(at); }

private:
    template <class Number>
    Number read(qsizetype at) const
    {
        if (at < 0 || at > bytes_.size() - qsizetype(sizeof(Number)))
            return 0;
        const char* place = bytes_.data() + at;
        return bigEndian_ ? qFromBigEndian<Number>(place) : qFromLittleEndian<Number>(place);
    }

    QByteArrayView bytes_;
    bool bigEndian_;
};

/// ITU T.81: the size stands in the frame header, which comes behind other segments.
QSize jpegSize(const QByteArray& bytes)
{
    const Numbers numbers(bytes, true);
    qsizetype at = 2;
    while (at < bytes.size()) {
        const quint8 code = numbers.u8(at + 1);
        const bool isFill = numbers.u8(at) == 0xff && code == 0xff;
        const bool isFrame = code >= 0xc0 && code <= 0xcf && code != 0xc4 && code != 0xc8 && code != 0xcc;
        if (isFrame)
            return {numbers.u16(at + 7), numbers.u16(at + 5)};
        if (numbers.u8(at) != 0xff || code == 0xda || code == 0xd9)
            return {};
        at += isFill ? 1 : 2 + std::max<qsizetype>(numbers.u16(at + 2), 2);
    }
    return {};
}

/// ISO 15948.
QSize pngSize(const QByteArray& bytes)
{
    const Numbers numbers(bytes, true);
    if (bytes.mid(12, 4) != "IHDR")
        return {};
    return {int(numbers.u32(16)), int(numbers.u32(20))};
}

QSize gifSize(const QByteArray& bytes)
{
    const Numbers numbers(bytes, false);
    return {numbers.u16(6), numbers.u16(8)};
}

QSize bmpSize(const QByteArray& bytes)
{
    const Numbers numbers(bytes, false);
    constexpr quint32 oldHeader = 12;
    if (numbers.u32(14) == oldHeader)
        return {numbers.u16(18), numbers.u16(20)};
    return {int(numbers.u32(18)), std::abs(qBound(-INT_MAX, int(numbers.u32(22)), INT_MAX))};
}

/// TIFF 6.0: the size stands among the entries of the first directory.
QSize tiffSize(const QByteArray& bytes)
{
    constexpr quint16 width = 256;
    constexpr quint16 height = 257;
    constexpr quint16 shortType = 3;
    constexpr qsizetype entrySize = 12;
    const Numbers numbers(bytes, bytes.startsWith('M'));
    const qsizetype directory = numbers.u32(4);
    QSize size;
    for (int entry = 0; entry < numbers.u16(directory); ++entry) {
        const qsizetype at = directory + 2 + entry * entrySize;
        const quint32 value = numbers.u16(at + 2) == shortType ? numbers.u16(at + 8) : numbers.u32(at + 8);
        if (numbers.u16(at) == width)
            size.setWidth(int(value));
        else if (numbers.u16(at) == height)
            size.setHeight(int(value));
    }
    return size;
}

/// RFC 9649: one of three kinds of chunk comes first.
QSize webpSize(const QByteArray& bytes)
{
    constexpr quint32 fourteenBits = 0x3fff;
    const Numbers numbers(bytes, false);
    constexpr qsizetype longestHeader = 30;
    const QByteArray chunk = bytes.mid(12, 4);
    if (bytes.size() < longestHeader)
        return {};
    if (chunk == "VP8X")
        return {int(numbers.u24(24)) + 1, int(numbers.u24(27)) + 1};
    if (chunk == "VP8 " && bytes.mid(23, 3) == "\x9d\x01\x2a")
        return {int(numbers.u16(26) & fourteenBits), int(numbers.u16(28) & fourteenBits)};
    if (chunk != "VP8L" || numbers.u8(20) != 0x2f)
        return {};
    const quint32 bits = numbers.u32(21);
    return {int(bits & fourteenBits) + 1, int(bits >> 14 & fourteenBits) + 1};
}

struct Format {
    const char* name = nullptr;
    const char* mimeType = nullptr;
    /// The bytes at offset 0, and those at offset 8.
    QByteArrayView start;
    QByteArrayView atEight;
    QSize (*size)(const QByteArray& bytes) = nullptr;
};

constexpr std::array formats{
    Format{"jpeg", "image/jpeg", "\xff\xd8\xff", "", jpegSize},
    Format{"png", "image/png", "\x89PNG\r\n\x1a\n", "", pngSize},
    Format{"gif", "image/gif", "GIF8", "", gifSize},
    Format{"bmp", "image/bmp", "BM", "", bmpSize},
    Format{"tiff", "image/tiff", {"II*\0", 4}, "", tiffSize},
    Format{"tiff", "image/tiff", {"MM\0*", 4}, "", tiffSize},
    Format{"webp", "image/webp", "RIFF", "WEBP", webpSize},
};

const Format* formatOf(const QByteArray& bytes)
{
    for (const auto& format : formats) {
        if (bytes.startsWith(format.start) && bytes.mid(8, format.atEight.size()) == format.atEight)
            return &format;
    }
    return nullptr;
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
    const Format* format = formatOf(bytes);
    const QSize size = format ? format->size(bytes) : QSize();
    return size.isEmpty() ? QSize() : size;
}
