#include "platform/RecentDocuments.h"

#include "platform/FileSystem.h"
#include "platform/PathBytes.h"

#include <QDateTime>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QMimeDatabase>
#include <QSaveFile>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>

#include <utility>

namespace {

const QByteArray emptyList = R"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0"
      xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks"
      xmlns:mime="http://www.freedesktop.org/standards/shared-mime-info"
></xbel>)";

QDomDocument readList(const QString& path)
{
    QDomDocument document;
    QFile file(path);
    if (!file.exists())
        document.setContent(emptyList);
    else if (!file.open(QIODevice::ReadOnly) || !document.setContent(file.readAll()))
        return {};
    return document;
}

QDomElement findChild(const QDomElement& parent, const QString& name, const QString& attribute, const QString& value)
{
    QDomElement element = parent.firstChildElement(name);
    while (!element.isNull() && element.attribute(attribute) != value)
        element = element.nextSiblingElement(name);
    return element;
}

/// The child with this attribute, made when there is none.
QDomElement child(QDomElement parent, const QString& name, const QString& attribute = {}, const QString& value = {})
{
    QDomElement element = findChild(parent, name, attribute, value);
    if (element.isNull()) {
        element = parent.ownerDocument().createElement(name);
        if (!attribute.isEmpty())
            element.setAttribute(attribute, value);
        parent.appendChild(element);
    }
    return element;
}

const QString programName = QStringLiteral("Sonvika");

/// Whether this program is among those that noted the file.
bool isOurs(const QDomElement& bookmark)
{
    const auto applications = bookmark.elementsByTagName(QStringLiteral("bookmark:application"));
    for (int i = 0; i < applications.size(); ++i) {
        if (applications.at(i).toElement().attribute(QStringLiteral("name")) == programName)
            return true;
    }
    return false;
}

/// Lists the file, or brings its entry up to date; what other programs noted there stays.
void noteBookmark(const QDomElement& list, const QString& path, const QString& time)
{
    const QString address = PathBytes::toUrl(path).toString(QUrl::FullyEncoded);
    QDomElement bookmark = child(list, QStringLiteral("bookmark"), QStringLiteral("href"), address);
    if (!bookmark.hasAttribute(QStringLiteral("added")))
        bookmark.setAttribute(QStringLiteral("added"), time);
    bookmark.setAttribute(QStringLiteral("modified"), time);
    bookmark.setAttribute(QStringLiteral("visited"), time);

    QDomElement metadata = child(child(bookmark, QStringLiteral("info")), QStringLiteral("metadata"),
                                 QStringLiteral("owner"), QStringLiteral("http://freedesktop.org"));
    child(metadata, QStringLiteral("mime:mime-type"))
        .setAttribute(QStringLiteral("type"),
                      QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension).name());
    QDomElement application = child(child(metadata, QStringLiteral("bookmark:applications")),
                                    QStringLiteral("bookmark:application"), QStringLiteral("name"), programName);
    application.setAttribute(QStringLiteral("exec"), QStringLiteral("'sonvika %u'"));
    application.setAttribute(QStringLiteral("modified"), time);
    const int count = application.attribute(QStringLiteral("count")).toInt();
    application.setAttribute(QStringLiteral("count"), count + 1);
}

} // namespace

RecentFilesList::RecentFilesList(QString listPath) : listPath_(std::move(listPath)) {}

void RecentFilesList::noteNewRecentDocument(const QString& path)
{
    if (pending_.isEmpty())
        QTimer::singleShot(0, this, &RecentFilesList::writePending);
    pending_.removeOne(path);
    pending_.append(path);
    if (pending_.size() > batchLimit)
        pending_.removeFirst();
}

QStringList RecentFilesList::recentDocuments() const
{
    const QDomElement list = readList(listPath_).documentElement();
    QMultiMap<QString, QString> byTime;
    for (auto bookmark = list.firstChildElement(QStringLiteral("bookmark")); !bookmark.isNull();
         bookmark = bookmark.nextSiblingElement(QStringLiteral("bookmark"))) {
        const QUrl url(bookmark.attribute(QStringLiteral("href")));
        if (url.isLocalFile() && isOurs(bookmark))
            byTime.insert(bookmark.attribute(QStringLiteral("visited")), PathBytes::fromUrl(url));
    }
    QStringList files;
    for (auto entry = byTime.end(); entry != byTime.begin() && files.size() < listedLimit;) {
        --entry;
        if (FileSystem::exists(*entry))
            files.append(*entry);
    }
    return files;
}

QString RecentFilesList::defaultListPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
           + QStringLiteral("/recently-used.xbel");
}

void RecentFilesList::writePending()
{
    const QStringList paths = std::exchange(pending_, {});
    QDomDocument document = readList(listPath_);
    if (document.documentElement().tagName() != QLatin1String("xbel"))
        return;
    const QString time = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    for (const auto& path : paths)
        noteBookmark(document.documentElement(), path, time);

    QDir().mkpath(QFileInfo(listPath_).path());
    QSaveFile file(listPath_);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(document.toByteArray(2));
    file.commit();
}
