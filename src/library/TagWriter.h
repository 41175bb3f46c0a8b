#pragma once

#include "model/AudioFile.h"

class Notifier;

/// Writes changed tags into one file and tells the user when it can't.
class TagWriter {
public:
    explicit TagWriter(Notifier& notifier);

    /// Writes the keys of @p changes (an empty value clears) into the record's file. The record
    /// takes over what the file has then, written or not: a container may hold less than was asked for, as a year
    /// without its day.
    /// @return true when the file was written.
    bool writeTags(AudioFile& record, const PropertyMap& changes);

private:
    bool write(const QString& path, const PropertyMap& changes);

    Notifier& notifier_;
};
