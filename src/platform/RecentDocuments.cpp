#include "platform/RecentDocuments.h"

#include <QDateTime>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
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

QDomElement child(QDomDocument& document, QDomElement parent, const QString& name)
{
    QDomElement element = document.createElement(name);
    parent.appendChild(element);
    return element;
}

void removeBookmark(QDomElement list, const QString& address)
{
    QDomElement bookmark = list.firstChildElement(QStringLiteral("bookmark"));
    while (!bookmark.isNull()) {
        const QDomElement next = bookmark.nextSiblingElement(QStringLiteral("bookmark"));
        if (bookmark.attribute(QStringLiteral("href")) == address)
            list.removeChild(bookmark);
        bookmark = next;
    }
}

void appendBookmark(QDomDocument& document, const QString& path, const QString& time)
{
    QDomElement list = document.documentElement();
    const QString address = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    removeBookmark(list, address);

    QDomElement bookmark = child(document, list, QStringLiteral("bookmark"));
    bookmark.setAttribute(QStringLiteral("href"), address);
    for (const auto& moment : {"added", "modified", "visited"})
        bookmark.setAttribute(QLatin1String(moment), time);

    QDomElement info = child(document, bookmark, QStringLiteral("info"));
    QDomElement metadata = child(document, info, QStringLiteral("metadata"));
    metadata.setAttribute(QStringLiteral("owner"), QStringLiteral("http://freedesktop.org"));
    QDomElement mime = child(document, metadata, QStringLiteral("mime:mime-type"));
    mime.setAttribute(QStringLiteral("type"),
                      QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension).name());
    QDomElement applications = child(document, metadata, QStringLiteral("bookmark:applications"));
    QDomElement application = child(document, applications, QStringLiteral("bookmark:application"));
    application.setAttribute(QStringLiteral("name"), QStringLiteral("Sonvika"));
    application.setAttribute(QStringLiteral("exec"), QStringLiteral("'sonvika %u'"));
    application.setAttribute(QStringLiteral("modified"), time);
    application.setAttribute(QStringLiteral("count"), QStringLiteral("1"));
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
        appendBookmark(document, path, time);

    QDir().mkpath(QFileInfo(listPath_).path());
    QSaveFile file(listPath_);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(document.toByteArray(2));
    file.commit();
}
