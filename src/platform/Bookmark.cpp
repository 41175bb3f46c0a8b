#include "platform/Bookmark.h"

#include "platform/FileSystem.h"
#include "platform/PathBytes.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>
#include <cstring>
#include <optional>

#include <sys/stat.h>

namespace {

const QLatin1String pathKey("path");
const QLatin1String deviceKey("device");
const QLatin1String inodeKey("inode");
const QLatin1String scopeKey("securityScope");

/// Throws Bookmark::Error where there is nothing.
struct stat examine(const QString& path)
{
    struct stat found {};
    if (::stat(PathBytes::encode(path).constData(), &found) != 0)
        throw Bookmark::Error(std::strerror(errno));
    return found;
}

QString decimal(quint64 number)
{
    return QString::number(number);
}

} // namespace

QByteArray Bookmark::create(const QString& path, Options options)
{
    const QString canonical = PathBytes::decode(FileSystem::realPath(PathBytes::encode(path)));
    if (canonical.isEmpty())
        throw Error(std::strerror(errno));
    const struct stat found = examine(canonical);
    const QJsonObject bookmark{{pathKey, canonical},
                               {deviceKey, decimal(found.st_dev)},
                               {inodeKey, decimal(found.st_ino)},
                               {scopeKey, options == Options::SecurityScope}};
    return QJsonDocument(bookmark).toJson(QJsonDocument::Compact);
}

Bookmark::Resolved Bookmark::resolve(const QByteArray& bookmark)
{
    const QJsonObject object = QJsonDocument::fromJson(bookmark).object();
    const QString path = object[pathKey].toString();
    if (path.isEmpty() || !object.contains(inodeKey))
        throw Error("The bookmark is damaged");
    const struct stat found = examine(path);
    const bool isSame =
        object[deviceKey].toString() == decimal(found.st_dev) && object[inodeKey].toString() == decimal(found.st_ino);
    return {path, !isSame};
}

bool Bookmark::startAccessingSecurityScopedResource(const QString& path)
{
    return FileSystem::isReadableFile(path);
}

void Bookmark::stopAccessingSecurityScopedResource(const QString&) {}
