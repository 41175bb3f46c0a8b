#pragma once

#include <QList>
#include <QString>

class ArrayController;
class AudioFile;
class TagWriter;
class WorkMonitor;

/// One edited field.
struct FieldEdit {
    /// A property key, or one of TRACKNUM, TRACKTOTAL, DISCNUM and DISCTOTAL, which are combined with each record's
    /// own other half.
    QString key;
    /// The new text; empty clears.
    QString value;
};

/// Applies edited fields to every selected record.
class FieldEditor {
public:
    FieldEditor(ArrayController& list, TagWriter& writer, WorkMonitor& monitor);

    /// Each record's file is written at once; the records have what their files have then.
    void applyEdit(const QString& key, const QString& value) { applyEdits({{key, value}}); }
    /// The same for several fields, one on top of the other; each file is written once.
    void applyEdits(const QList<FieldEdit>& edits);

private:
    void apply(const QList<FieldEdit>& edits, AudioFile& record);

    ArrayController& list_;
    TagWriter& writer_;
    WorkMonitor& monitor_;
};
