#include "artwork/ImageFormats.h"

#include "platform/UserDefaults.h"

namespace {

constexpr int jpeg = 0;
constexpr int tiff = 2;

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
    if (format == jpeg)
        return {QStringLiteral("jpeg"), extension};
    return format == tiff ? QStringList{extension, QStringLiteral("tif")} : QStringList{extension};
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
    for (int format = jpeg; format < extensions().size(); ++format) {
        if (allowedExtensions(format).contains(extension))
            return format;
    }
    return jpeg;
}

int ImageFormats::storedIndex(const UserDefaults& defaults)
{
    const int index = defaults.intForKey(DefaultsKey::fileTypeIndex);
    return index >= 0 && index < extensions().size() ? index : jpeg;
}
