#pragma once

#include "library/TextFold.h"
#include "model/AudioFile.h"

#include <QString>
#include <QStringMatcher>

#include <vector>

/// The columns of the list: which text of a record each shows, and how records are ordered by it.
namespace RecordColumns {

enum Column {
    FileName,
    Title,
    Artist,
    Album,
    AlbumArtist,
    TrackNumber,
    DiscNumber,
    Year,
    Genre,
    Comment,
    Compilation,
    Count
};

/// The heading in the user's language.
QString heading(int column);

/// The text of a cell: the record's text, but a check mark for a set compilation flag and nothing for an unset one.
QString cellText(const AudioFile& record, int column);

/// True for the columns that hold numbers.
bool isNumeric(int column);

/// Orders records by a column, stably: numbers as numbers (then totals), text by the user's locale, with digits in
/// it as numbers. Empty values come first.
void sort(std::vector<AudioFilePtr>& records, int column, bool ascending);

/// Whether every one of the words, which are folded, occurs in the folded file name or in a folded text field.
bool matches(const AudioFile& record, const std::vector<QStringMatcher>& words, const TextFold& fold);

} // namespace RecordColumns
