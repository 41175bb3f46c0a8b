#pragma once

#include "tagengine/PropertyMap.h"

#include <QByteArray>
#include <QList>
#include <QSize>
#include <QString>

#include <optional>

class QJsonArray;
class QJsonObject;

/// A chapter of an MPEG file.
struct Chapter {
    QString title;
    qint64 startMs = 0;

    /// @param text as the engine gives it: title, "@" and milliseconds.
    static Chapter fromText(const QString& text);
    static QList<Chapter> fromTexts(const QStringList& texts);
};

/// What `show` tells about a file.
struct FileReport {
    struct Art {
        qint64 size = 0; ///< in bytes
        QByteArray sha256;
        QByteArray format; ///< as Picture tells it; empty when it is no picture
        QSize pixels;      ///< empty when it is no picture
    };

    QString path;
    QString type;
    PropertyMap tags;
    /// All values of the tags that have several.
    QMap<QString, QStringList> severalValues;
    std::optional<Art> art;
    /// None where there can be none.
    std::optional<QList<Chapter>> chapters;

    /// @return none when the tags can't be read; the engine knows why.
    static std::optional<FileReport> read(const QString& path);

    /// One JSON object (RFC 8259) without line breaks. A path that is not UTF-8 has U+FFFD for the bytes that are not,
    /// and the member `path_base64` (RFC 4648) for all of them.
    QByteArray toJson() const;
    /// For people: the path and, indented, one line for each thing that there is to tell.
    QByteArray toText(bool inColour) const;
};

/// The members `path` and, for a path that is not UTF-8, `path_base64`.
QJsonObject pathMembers(const QString& path);

/// A list of objects with `title` and `start_ms`.
QJsonArray toJson(const QList<Chapter>& chapters);
