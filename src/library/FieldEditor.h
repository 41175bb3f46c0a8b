#pragma once

#include <QString>

class ArrayController;
class TagWriter;

/// Applies one edited field to every selected record.
class FieldEditor {
public:
    FieldEditor(ArrayController& list, TagWriter& writer);

    /// @param key a property key, or one of TRACKNUM, TRACKTOTAL, DISCNUM and DISCTOTAL, which are combined with each
    /// record's own other half.
    /// @param value the new text; empty clears.
    /// Each record's file is written at once; a record changes only when its file was written.
    void applyEdit(const QString& key, const QString& value);

private:
    ArrayController& list_;
    TagWriter& writer_;
};
