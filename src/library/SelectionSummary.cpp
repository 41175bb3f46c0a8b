#include "library/SelectionSummary.h"

#include "model/NumberText.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace {

struct Name {
    QString name;
    QString (*valueOf)(const AudioFile&);
    bool isNumber;
};

const std::array<Name, 16>& names()
{
    static const std::array<Name, 16> list{{
        {QStringLiteral("title"), [](const AudioFile& r) { return r.title; }, false},
        {QStringLiteral("artist"), [](const AudioFile& r) { return r.artist; }, false},
        {QStringLiteral("album"), [](const AudioFile& r) { return r.album; }, false},
        {QStringLiteral("albumArtist"), [](const AudioFile& r) { return r.albumArtist; }, false},
        {QStringLiteral("trackNum"), [](const AudioFile& r) { return NumberText::split(r.trackNumber).num; }, true},
        {QStringLiteral("trackTotal"), [](const AudioFile& r) { return NumberText::split(r.trackNumber).total; },
         true},
        {QStringLiteral("discNum"), [](const AudioFile& r) { return NumberText::split(r.discNumber).num; }, true},
        {QStringLiteral("discTotal"), [](const AudioFile& r) { return NumberText::split(r.discNumber).total; }, true},
        {QStringLiteral("year"), [](const AudioFile& r) { return r.year; }, false},
        {QStringLiteral("genre"), [](const AudioFile& r) { return r.genre; }, false},
        {QStringLiteral("comment"), [](const AudioFile& r) { return r.comment; }, false},
        {QStringLiteral("compilation"), [](const AudioFile& r) { return r.compilation; }, false},
        {QStringLiteral("path"), [](const AudioFile& r) { return r.path; }, false},
        {QStringLiteral("fileName"), [](const AudioFile& r) { return r.fileName; }, false},
        {QStringLiteral("fileType"), [](const AudioFile& r) { return r.fileType; }, false},
        {QStringLiteral("imageDataLength"), [](const AudioFile& r) { return QString::number(r.imageDataLength); },
         true},
    }};
    return list;
}

} // namespace

SelectionSummary::SelectionSummary(const std::vector<AudioFilePtr>& records) : records_(records)
{
    if (records.empty())
        return;
    std::sort(records_.begin(), records_.end());
    for (const auto& [name, valueOf, isNumber] : names()) {
        const QString first = valueOf(*records.front());
        const bool same = std::all_of(records.begin() + 1, records.end(),
                                      [&, value = valueOf](const auto& record) { return value(*record) == first; });
        if (same) {
            values_[name] = first;
            continue;
        }
        values_[name] = isNumber ? NumberText::variousNumber : NumberText::various;
        mixed_.insert(name);
    }
}

QString SelectionSummary::shownValue(const QString& name) const
{
    const QString found = value(name);
    return isMixed(name) && found == NumberText::various ? QCoreApplication::translate("SelectionSummary", "Various")
                                                         : found;
}
