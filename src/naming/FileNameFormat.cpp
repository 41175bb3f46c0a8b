#include "naming/FileNameFormat.h"

#include "model/AudioFile.h"
#include "platform/UserDefaults.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <array>

namespace {

struct Field {
    const char* title = nullptr;
    QString AudioFile::*text = nullptr;
    bool isNumber = false;
};

constexpr std::array fields{
    Field{QT_TRANSLATE_NOOP("FileNameFormat", "Track"), &AudioFile::trackNumber, true},
    Field{QT_TRANSLATE_NOOP("FileNameFormat", "Title"), &AudioFile::title},
    Field{QT_TRANSLATE_NOOP("FileNameFormat", "Album"), &AudioFile::album},
    Field{QT_TRANSLATE_NOOP("FileNameFormat", "Year"), &AudioFile::year},
    Field{QT_TRANSLATE_NOOP("FileNameFormat", "Artist"), &AudioFile::artist},
    Field{QT_TRANSLATE_NOOP("FileNameFormat", "Album Artist"), &AudioFile::albumArtist},
    Field{QT_TRANSLATE_NOOP("FileNameFormat", "Disc"), &AudioFile::discNumber, true},
    Field{QT_TRANSLATE_NOOP("FileNameFormat", "Genre"), &AudioFile::genre},
};

const Field* fieldForToken(const QString& token)
{
    const auto index = FileNameFormat::sortedKeys().indexOf(token);
    return index < 0 ? nullptr : &fields[static_cast<std::size_t>(index)];
}

/// "3/12" as "03".
QString formattedNumber(const QString& value)
{
    constexpr int digits = 2;
    const QString number = value.section(QLatin1Char('/'), 0, 0);
    const bool hasSign = number.startsWith(QLatin1Char('+')) || number.startsWith(QLatin1Char('-'));
    const auto first = number.begin() + (hasSign ? 1 : 0);
    const bool isDecimal = std::all_of(first, number.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    bool fits = false;
    const qlonglong read = number.toLongLong(&fits);
    if (!isDecimal || !fits)
        return number;
    const QString magnitude = QString::number(read).remove(QLatin1Char('-'));
    return (read < 0 ? QStringLiteral("-") : QString()) + magnitude.rightJustified(digits, QLatin1Char('0'));
}

QString valueOf(const Field& field, const AudioFile& record)
{
    const QString& value = record.*field.text;
    return field.isNumber ? formattedNumber(value) : value;
}

bool isLineBreak(QChar character)
{
    constexpr char16_t nextLine = 0x85;
    return (character >= u'\n' && character <= u'\r') || character == QChar(nextLine)
           || character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
}

} // namespace

const QStringList& FileNameFormat::sortedKeys()
{
    static const QStringList titles = [] {
        QStringList names;
        for (const auto& field : fields)
            names.append(QLatin1String(field.title));
        return names;
    }();
    return titles;
}

QString FileNameFormat::shownTitle(const QString& token)
{
    const Field* field = fieldForToken(token);
    return field ? QCoreApplication::translate("FileNameFormat", field->title) : token;
}

QString FileNameFormat::tokenFor(const QString& text)
{
    const auto& keys = sortedKeys();
    const auto found =
        std::find_if(keys.begin(), keys.end(), [&](const auto& key) { return shownTitle(key) == text; });
    return found == keys.end() ? text : *found;
}

bool FileNameFormat::isFieldToken(const QString& token)
{
    return fieldForToken(token);
}

QStringList FileNameFormat::defaultTokens()
{
    QStringList tokens;
    for (const auto& title : sortedKeys().first(4))
        tokens += {title, QStringLiteral(" - ")};
    tokens.removeLast();
    return tokens;
}

QStringList FileNameFormat::storedTokens(const UserDefaults& defaults)
{
    const auto stored = QJsonDocument::fromJson(defaults.dataForKey(DefaultsKey::fileFormatTokens));
    if (!stored.isArray())
        return defaultTokens();
    QStringList tokens;
    for (const auto& value : stored.array()) {
        if (!value.isString())
            return defaultTokens();
        tokens.append(value.toString());
    }
    return tokens;
}

void FileNameFormat::storeTokens(UserDefaults& defaults, const QStringList& tokens)
{
    const QJsonDocument stored(QJsonArray::fromStringList(tokens));
    defaults.setObject(DefaultsKey::fileFormatTokens, QString::fromUtf8(stored.toJson(QJsonDocument::Compact)));
    defaults.synchronize();
}

QString FileNameFormat::buildFileName(const QStringList& format, const AudioFile& record)
{
    QString name;
    for (const auto& token : format) {
        const Field* field = fieldForToken(token);
        name += field ? valueOf(*field, record) : token;
    }
    return name.isEmpty() ? name : name + QLatin1Char('.') + record.fileType;
}

bool FileNameFormat::valuesBreakLine(const QStringList& format, const AudioFile& record)
{
    return std::any_of(format.begin(), format.end(), [&](const QString& token) {
        const Field* field = fieldForToken(token);
        const QString value = field ? valueOf(*field, record) : QString();
        return std::any_of(value.begin(), value.end(), isLineBreak);
    });
}
