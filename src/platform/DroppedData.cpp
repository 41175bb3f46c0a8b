#include "platform/DroppedData.h"

#include "platform/PathBytes.h"

#include <QCoreApplication>
#include <QMimeDatabase>
#include <QUrl>

#include <algorithm>

namespace {

/// The type that a `data:` address (RFC 2397) names; empty for any other address.
QString typeOfDataAddress(const QUrl& url)
{
    if (url.scheme() != QLatin1String("data"))
        return {};
    return url.path(QUrl::FullyEncoded).section(QLatin1Char(','), 0, 0).section(QLatin1Char(';'), 0, 0);
}

QByteArray contentsOfDataAddress(const QUrl& url)
{
    const QString path = url.path(QUrl::FullyEncoded);
    const QByteArray contents = QByteArray::fromPercentEncoding(path.section(QLatin1Char(','), 1).toLatin1());
    const bool isBase64 = path.section(QLatin1Char(','), 0, 0).endsWith(QLatin1String(";base64"));
    return isBase64 ? QByteArray::fromBase64(contents) : contents;
}

QString fileNameFor(const QString& mimeType)
{
    const QString name = QCoreApplication::translate("DroppedData", "Dropped file");
    return name + QLatin1Char('.') + QMimeDatabase().mimeTypeForName(mimeType).preferredSuffix();
}

} // namespace

QStringList DroppedData::localFiles(const QMimeData& data)
{
    QStringList files;
    for (const auto& url : data.urls()) {
        if (url.isLocalFile())
            files.append(PathBytes::fromUrl(url));
    }
    return files;
}

QStringList DroppedData::localFilesOfType(const QMimeData& data, const QStringList& mimeTypes)
{
    QStringList files = localFiles(data);
    const QMimeDatabase database;
    files.removeIf([&](const QString& file) { return !mimeTypes.contains(database.mimeTypeForFile(file).name()); });
    return files;
}

bool DroppedData::offersData(const QMimeData& data, const QStringList& mimeTypes)
{
    const auto urls = data.urls();
    return std::any_of(mimeTypes.begin(), mimeTypes.end(), [&](const auto& type) { return data.hasFormat(type); })
           || std::any_of(urls.begin(), urls.end(),
                          [&](const auto& url) { return mimeTypes.contains(typeOfDataAddress(url)); });
}

std::optional<DroppedData::Data> DroppedData::readData(const QMimeData& data, const QStringList& mimeTypes)
{
    for (const auto& url : data.urls()) {
        const QString type = typeOfDataAddress(url);
        if (mimeTypes.contains(type))
            return Data{contentsOfDataAddress(url), fileNameFor(type)};
    }
    for (const auto& type : data.formats()) {
        if (!mimeTypes.contains(type))
            continue;
        const QByteArray bytes = data.data(type);
        if (!bytes.isEmpty())
            return Data{bytes, fileNameFor(type)};
    }
    return std::nullopt;
}
