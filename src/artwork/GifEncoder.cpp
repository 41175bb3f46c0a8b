#include "artwork/GifEncoder.h"

#include <gif_lib.h>
#include <libimagequant.h>

#include <limits>
#include <memory>
#include <vector>

namespace {

constexpr int colourBits = 8;
constexpr int colourCount = 1 << colourBits;
constexpr int opaqueFrom = 128;
constexpr int quantiserSpeed = 4;

struct Destroy {
    void operator()(liq_attr* attributes) const { liq_attr_destroy(attributes); }
    void operator()(liq_image* image) const { liq_image_destroy(image); }
    void operator()(liq_result* result) const { liq_result_destroy(result); }
    void operator()(ColorMapObject* map) const { GifFreeMapObject(map); }
};

/// Every pixel an index into a palette.
struct IndexedPicture {
    std::vector<unsigned char> pixels;
    liq_palette palette{};
};

/// Pixels as red, green, blue and an alpha that is 0 or 255.
QImage withBinaryAlpha(const QImage& image)
{
    QImage pixels = image.convertToFormat(QImage::Format_RGBA8888);
    if (!image.hasAlphaChannel())
        return pixels;
    for (int y = 0; y < pixels.height(); ++y) {
        auto* pixel = pixels.scanLine(y);
        for (int x = 0; x < pixels.width(); ++x, pixel += 4) {
            if (pixel[3] < opaqueFrom)
                std::fill_n(pixel, 4, 0);
            else
                pixel[3] = 255;
        }
    }
    return pixels;
}

std::optional<IndexedPicture> quantise(const QImage& pixels)
{
    const std::unique_ptr<liq_attr, Destroy> attributes(liq_attr_create());
    if (!attributes)
        return std::nullopt;
    liq_set_max_colors(attributes.get(), colourCount);
    liq_set_speed(attributes.get(), quantiserSpeed);
    const std::unique_ptr<liq_image, Destroy> source(
        liq_image_create_rgba(attributes.get(), pixels.constBits(), pixels.width(), pixels.height(), 0));
    liq_result* made = nullptr;
    if (!source || liq_image_quantize(source.get(), attributes.get(), &made) != LIQ_OK)
        return std::nullopt;
    const std::unique_ptr<liq_result, Destroy> result(made);
    liq_set_dithering_level(result.get(), 1.0F);
    IndexedPicture indexed;
    indexed.pixels.resize(static_cast<std::size_t>(pixels.width()) * static_cast<std::size_t>(pixels.height()));
    if (liq_write_remapped_image(result.get(), source.get(), indexed.pixels.data(), indexed.pixels.size()) != LIQ_OK)
        return std::nullopt;
    indexed.palette = *liq_get_palette(result.get());
    return indexed;
}

std::optional<int> transparentIndex(const liq_palette& palette)
{
    for (unsigned int i = 0; i < palette.count; ++i) {
        if (palette.entries[i].a < opaqueFrom)
            return static_cast<int>(i);
    }
    return std::nullopt;
}

std::unique_ptr<ColorMapObject, Destroy> colourMap(const liq_palette& palette)
{
    std::unique_ptr<ColorMapObject, Destroy> map(GifMakeMapObject(colourCount, nullptr));
    for (unsigned int i = 0; map && i < palette.count; ++i)
        map->Colors[i] = {palette.entries[i].r, palette.entries[i].g, palette.entries[i].b};
    return map;
}

int append(GifFileType* file, const GifByteType* bytes, int count)
{
    static_cast<QByteArray*>(file->UserData)->append(reinterpret_cast<const char*>(bytes), count);
    return count;
}

bool putTransparency(GifFileType* file, int index)
{
    const GraphicsControlBlock block{DISPOSAL_UNSPECIFIED, false, 0, index};
    GifByteType bytes[4];
    EGifGCBToExtension(&block, bytes);
    return EGifPutExtension(file, GRAPHICS_EXT_FUNC_CODE, sizeof bytes, bytes) == GIF_OK;
}

bool putPicture(GifFileType* file, IndexedPicture& picture, const QSize& size)
{
    const auto map = colourMap(picture.palette);
    EGifSetGifVersion(file, true);
    if (!map || EGifPutScreenDesc(file, size.width(), size.height(), colourBits, 0, map.get()) != GIF_OK)
        return false;
    const auto transparent = transparentIndex(picture.palette);
    if (transparent && !putTransparency(file, *transparent))
        return false;
    if (EGifPutImageDesc(file, 0, 0, size.width(), size.height(), false, nullptr) != GIF_OK)
        return false;
    auto* line = picture.pixels.data();
    for (int y = 0; y < size.height(); ++y, line += size.width()) {
        if (EGifPutLine(file, line, size.width()) != GIF_OK)
            return false;
    }
    return true;
}

} // namespace

std::optional<QByteArray> GifEncoder::encode(const QImage& image)
{
    constexpr int longestSide = std::numeric_limits<unsigned short>::max();
    if (image.isNull() || image.width() > longestSide || image.height() > longestSide)
        return std::nullopt;
    auto picture = quantise(withBinaryAlpha(image));
    if (!picture)
        return std::nullopt;
    QByteArray bytes;
    GifFileType* file = EGifOpen(&bytes, append, nullptr);
    if (!file)
        return std::nullopt;
    const bool written = putPicture(file, *picture, image.size());
    const bool closed = EGifCloseFile(file, nullptr) == GIF_OK;
    return written && closed ? std::optional(bytes) : std::nullopt;
}
