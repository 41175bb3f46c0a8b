#include "library/RecordColumns.h"

#include "library/TextOrder.h"
#include "model/NumberText.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <numeric>

namespace RecordColumns {

namespace {

struct ColumnInfo {
    const char* heading;
    QString AudioFile::*text;
    bool numeric;
};

constexpr std::array<ColumnInfo, Count> columns{{
    {QT_TRANSLATE_NOOP("RecordColumns", "File Name"), &AudioFile::fileName, false},
    {QT_TRANSLATE_NOOP("RecordColumns", "Title"), &AudioFile::title, false},
    {QT_TRANSLATE_NOOP("RecordColumns", "Artist"), &AudioFile::artist, false},
    {QT_TRANSLATE_NOOP("RecordColumns", "Album"), &AudioFile::album, false},
    {QT_TRANSLATE_NOOP("RecordColumns", "Album Artist"), &AudioFile::albumArtist, false},
    {QT_TRANSLATE_NOOP("RecordColumns", "Track"), &AudioFile::trackNumber, true},
    {QT_TRANSLATE_NOOP("RecordColumns", "Disc"), &AudioFile::discNumber, true},
    {QT_TRANSLATE_NOOP("RecordColumns", "Year"), &AudioFile::year, true},
    {QT_TRANSLATE_NOOP("RecordColumns", "Genre"), &AudioFile::genre, false},
    {QT_TRANSLATE_NOOP("RecordColumns", "Comment"), &AudioFile::comment, false},
    {QT_TRANSLATE_NOOP("RecordColumns", "Compilation"), &AudioFile::compilation, true},
}};

constexpr int usualLength = 256;

const ColumnInfo& info(int column)
{
    return columns[static_cast<std::size_t>(column)];
}

qlonglong leadingNumber(QStringView text)
{
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    return text.first(end - text.begin()).toLongLong();
}

struct NumberKey {
    bool present;
    qlonglong number;
    qlonglong total;
    auto operator<=>(const NumberKey&) const = default;
};

NumberKey numberKey(const QString& text)
{
    const auto parts = NumberText::split(text);
    return {!text.isEmpty(), leadingNumber(parts.num), leadingNumber(parts.total)};
}

template <class Key, class MakeKey>
void sortByKey(std::vector<AudioFilePtr>& records, QString AudioFile::*text, bool ascending, MakeKey makeKey)
{
    std::vector<Key> keys;
    keys.reserve(records.size());
    for (const auto& record : records)
        keys.push_back(makeKey((*record).*text));
    std::vector<std::size_t> order(records.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return ascending ? keys[a] < keys[b] : keys[b] < keys[a]; });
    std::vector<AudioFilePtr> sorted;
    sorted.reserve(records.size());
    for (const auto index : order)
        sorted.push_back(std::move(records[index]));
    records = std::move(sorted);
}

/// What is searched, folded, with ends of lines, which no word contains, between the texts.
QString searchedText(const AudioFile& record, const TextFold& fold)
{
    QString all;
    all.reserve(usualLength);
    for (const auto& column : columns) {
        if (column.text == &AudioFile::compilation)
            continue;
        fold.appendTo(all, record.*column.text);
        all += u'\n';
    }
    return all;
}

} // namespace

QString heading(int column)
{
    return QCoreApplication::translate("RecordColumns", info(column).heading);
}

QString cellText(const AudioFile& record, int column)
{
    if (column == Compilation)
        return record.compilation == QLatin1String("1") ? QStringLiteral("\u2713") : QString();
    return record.*info(column).text;
}

bool isNumeric(int column)
{
    return info(column).numeric;
}

void sort(std::vector<AudioFilePtr>& records, int column, bool ascending)
{
    if (isNumeric(column)) {
        sortByKey<NumberKey>(records, info(column).text, ascending, numberKey);
        return;
    }
    const QCollator collator = TextOrder::collator();
    sortByKey<QCollatorSortKey>(records, info(column).text, ascending,
                                [&](const QString& text) { return collator.sortKey(text); });
}

bool matches(const AudioFile& record, const std::vector<QStringMatcher>& words, const TextFold& fold)
{
    const QString text = searchedText(record, fold);
    return std::all_of(words.begin(), words.end(),
                       [&](const QStringMatcher& word) { return word.indexIn(text) >= 0; });
}

} // namespace RecordColumns
