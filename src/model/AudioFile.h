#pragma once

#include "tagengine/PropertyMap.h"

#include <QString>

#include <memory>
#include <span>

/// The track record: one file of the list, as its tags were last read or written.
///
/// Shared and mutable; edits change it in place, after the file itself was written.
/// A missing value is an empty text.
class AudioFile {
public:
    /// One tag text of the record: its name, its key in a property map, and where it is stored.
    struct TagField {
        const char* name;
        const char* key;
        QString AudioFile::*text;
    };

    /// Reads the file at @p path and builds its record.
    /// @return null when its tags can't be read.
    static std::shared_ptr<AudioFile> fromFile(const QString& path);

    /// Builds the record of the file at @p path from its tags and the measure of its embedded picture.
    /// Keys that @p map does not hold give empty texts, and "0" for COMPILATION.
    static std::shared_ptr<AudioFile> fromPropertyMap(const PropertyMap& map, const QString& path,
                                                      qint64 imageDataLength);

    /// Takes over the ten tag fields that the file has now; the measure of its picture stays.
    /// @return false, with the record as it was, when the tags can't be read.
    bool readTags();

    /// The ten tag fields in declared order.
    static std::span<const TagField> tagFields();

    /// The ten tag fields under their keys, and TRACK: the number part of the track number. Every key is present.
    PropertyMap propertyMap() const;

    /// Copies the ten tag fields back from a full map.
    void setFromPropertyMap(const PropertyMap& map);

    /// Any text field by its name ("albumArtist", "fileName", …) or "imageDataLength" in decimal.
    /// @return a null text for a name that is no field.
    QString value(const QString& name) const;

    QString title;
    QString artist;
    QString album;
    QString albumArtist;
    QString trackNumber; ///< "3" or "3/12"
    QString discNumber;  ///< "1" or "1/2"
    QString year;        ///< empty when the file has none
    QString genre;
    QString comment;
    QString compilation; ///< "1" or "0"
    QString path;        ///< full path
    QString fileName;    ///< last component of the path
    QString fileType;    ///< extension exactly as written
    /// Measure of the embedded picture (see measureImage); 0 when there is none. It only serves comparisons.
    qint64 imageDataLength = 0;

private:
    /// As a file has them: keys that are not there, and a year of 0, are missing values.
    void takeTags(const PropertyMap& map);
};

using AudioFilePtr = std::shared_ptr<AudioFile>;
