#pragma once

#include "model/AudioFile.h"

#include <QMap>
#include <QSet>
#include <QString>

#include <vector>

/// What the selected records have in common, by field name.
///
/// The names are "title", "artist", "album", "albumArtist", "trackNum", "trackTotal", "discNum", "discTotal", "year",
/// "genre", "comment", "compilation", "path", "fileName", "fileType" and "imageDataLength". Where the records differ,
/// the value is a marker: "-" for the four numbers and for imageDataLength, "Various" for the others.
class SelectionSummary {
public:
    SelectionSummary() = default;
    explicit SelectionSummary(const std::vector<AudioFilePtr>& records);

    /// @return the common value or the marker; @p missing when nothing is selected.
    QString value(const QString& name, const QString& missing = {}) const { return values_.value(name, missing); }
    /// The value as the user reads it: "Various" in the user's language, and an empty text for what is missing.
    QString shownValue(const QString& name) const;
    /// True where the value is a marker.
    bool isMixed(const QString& name) const { return mixed_.contains(name); }
    bool isEmpty() const { return values_.isEmpty(); }
    /// Whether both are summaries of the same records, in whatever order.
    bool isOfSameRecords(const SelectionSummary& other) const { return records_ == other.records_; }

private:
    std::vector<AudioFilePtr> records_; ///< ordered by their addresses
    QMap<QString, QString> values_;
    QSet<QString> mixed_;
};
