#include "cli/FileReport.h"

#include "cli/Printable.h"
#include "model/PictureHeader.h"
#include "platform/PathBytes.h"
#include "tagengine/TaglibWrapper.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

#include <algorithm>
#include <array>
#include <vector>

namespace {

struct Label {
    const char* key;
    const char* text;
};

/// The keys that are shown first, in this order. TRACK only repeats a part of TRACKNUMBER.
constexpr std::array labels{
    Label{"TITLE", "Title"},       Label{"ARTIST", "Artist"},
    Label{"ALBUM", "Album"},       Label{"ALBUMARTIST", "Album artist"},
    Label{"TRACKNUMBER", "Track"}, Label{"DISCNUMBER", "Disc"},
    Label{"YEAR", "Year"},         Label{"GENRE", "Genre"},
    Label{"COMMENT", "Comment"},   Label{"COMPILATION", "Compilation"},
    Label{"TRACK", nullptr},
};

using Row = std::pair<QString, QString>;

bool isLabelled(const QString& key)
{
    return std::any_of(labels.begin(), labels.end(),
                       [&](const Label& label) { return key == QLatin1String(label.key); });
}

void appendTags(const FileReport& report, std::vector<Row>& rows)
{
    PropertyMap tags = report.tags;
    for (auto tag = report.severalValues.begin(); tag != report.severalValues.end(); ++tag)
        tags[tag.key()] = tag.value().join(QLatin1Char('\n'));
    for (const auto& [key, text] : labels) {
        const QString value = tags.value(QLatin1String(key));
        const bool isAbsentYear = value == QLatin1String("0") && QLatin1String(key) == QLatin1String("YEAR");
        if (text && !value.isEmpty() && !isAbsentYear)
            rows.emplace_back(QLatin1String(text), value);
    }
    for (auto tag = tags.begin(); tag != tags.end(); ++tag) {
        const bool repeatsYear =
            tag.key() == QLatin1String("DATE") && tag.value() == tags.value(QStringLiteral("YEAR"));
        if (!isLabelled(tag.key()) && !tag.value().isEmpty() && !repeatsYear)
            rows.emplace_back(tag.key(), tag.value());
    }
}

QString textOf(const FileReport::Art& art)
{
    const QString size = QLocale::c().formattedDataSize(art.size, 1, QLocale::DataSizeSIFormat);
    if (art.format.isEmpty())
        return QStringLiteral("no known picture, ") + size;
    return QStringLiteral("%1, %2 × %3 pixels, %4")
        .arg(QString::fromLatin1(art.format.toUpper()))
        .arg(art.pixels.width())
        .arg(art.pixels.height())
        .arg(size);
}

QString textOf(const Chapter& chapter)
{
    constexpr qint64 second = 1000;
    constexpr qint64 minute = 60 * second;
    constexpr qint64 hour = 60 * minute;
    const qint64 ms = chapter.startMs;
    return QStringLiteral("%1:%2:%3.%4  %5")
        .arg(ms / hour)
        .arg(ms % hour / minute, 2, 10, QLatin1Char('0'))
        .arg(ms % minute / second, 2, 10, QLatin1Char('0'))
        .arg(ms % second, 3, 10, QLatin1Char('0'))
        .arg(chapter.title);
}

std::vector<Row> rowsOf(const FileReport& report)
{
    std::vector<Row> rows{{QStringLiteral("Type"), report.type}};
    appendTags(report, rows);
    if (report.art)
        rows.emplace_back(QStringLiteral("Cover art"), textOf(*report.art));
    for (const auto& chapter : report.chapters.value_or(QList<Chapter>()))
        rows.emplace_back(QStringLiteral("Chapter"), textOf(chapter));
    return rows;
}

QJsonObject artObject(const FileReport::Art& art)
{
    const auto known = [&](const QJsonValue& value) { return art.format.isEmpty() ? QJsonValue() : value; };
    return {{QStringLiteral("bytes"), art.size},
            {QStringLiteral("sha256"), QString::fromLatin1(art.sha256)},
            {QStringLiteral("width"), known(art.pixels.width())},
            {QStringLiteral("height"), known(art.pixels.height())},
            {QStringLiteral("format"), known(QString::fromLatin1(art.format))}};
}

} // namespace

Chapter Chapter::fromText(const QString& text)
{
    const auto at = text.lastIndexOf(QLatin1Char('@'));
    // The engine gives times beyond 24 days as negative numbers.
    return {text.first(at), static_cast<quint32>(text.sliced(at + 1).toInt())};
}

QList<Chapter> Chapter::fromTexts(const QStringList& texts)
{
    QList<Chapter> chapters;
    for (const auto& text : texts)
        chapters.append(fromText(text));
    return chapters;
}

std::optional<FileReport> FileReport::read(const QString& path)
{
    FileReport report;
    report.path = path;
    report.type = TaglibWrapper::detectFileType(path).value_or(QString());
    const auto contents = TaglibWrapper::readContents(path, report.type, [&](const QByteArray& bytes) {
        const QSize pixels = Picture::size(bytes);
        report.art = {bytes.size(), QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex(),
                      pixels.isEmpty() ? QByteArray() : Picture::format(bytes), pixels};
    });
    if (!contents)
        return std::nullopt;
    report.tags = contents->tags;
    report.severalValues = contents->severalValues;
    if (contents->chapters)
        report.chapters = Chapter::fromTexts(*contents->chapters);
    return report;
}

QJsonObject pathMembers(const QString& path)
{
    const QByteArray bytes = PathBytes::encode(path);
    QJsonObject members{{QStringLiteral("path"), QString::fromUtf8(bytes)}};
    if (!PathBytes::isPlain(path))
        members.insert(QStringLiteral("path_base64"), QString::fromLatin1(bytes.toBase64()));
    return members;
}

QJsonArray toJson(const QList<Chapter>& chapters)
{
    QJsonArray list;
    for (const auto& chapter : chapters)
        list.append(
            QJsonObject{{QStringLiteral("title"), chapter.title}, {QStringLiteral("start_ms"), chapter.startMs}});
    return list;
}

QByteArray FileReport::toJson() const
{
    QJsonObject tagTexts;
    for (auto tag = tags.begin(); tag != tags.end(); ++tag)
        tagTexts.insert(tag.key(), tag.value());
    for (auto tag = severalValues.begin(); tag != severalValues.end(); ++tag)
        tagTexts.insert(tag.key(), QJsonArray::fromStringList(tag.value()));
    QJsonObject object = pathMembers(path);
    object.insert(QStringLiteral("type"), type);
    object.insert(QStringLiteral("tags"), tagTexts);
    object.insert(QStringLiteral("art"), art ? QJsonValue(artObject(*art)) : QJsonValue());
    object.insert(QStringLiteral("chapters"), chapters ? QJsonValue(::toJson(*chapters)) : QJsonValue());
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray FileReport::toText(bool inColour) const
{
    const auto rows = rowsOf(*this);
    qsizetype width = 0;
    for (const auto& row : rows)
        width = std::max(width, row.first.size());
    const QByteArray bold = inColour ? "\033[1m" : "";
    const QByteArray dim = inColour ? "\033[2m" : "";
    const QByteArray plain = inColour ? "\033[0m" : "";
    QByteArray text = bold + PathBytes::encode(Printable::line(path)) + plain + '\n';
    for (const auto& [label, value] : rows) {
        QByteArray shown = dim + Printable::line(label).leftJustified(width).toUtf8() + plain;
        for (QString line : value.split(QLatin1Char('\n'))) {
            line.remove(QLatin1Char('\r'));
            text += "  " + shown + "  " + Printable::line(line).toUtf8() + '\n';
            shown = QByteArray(width, ' ');
        }
    }
    return text;
}
