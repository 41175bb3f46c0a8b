#include "library/FieldEditor.h"

#include "library/ArrayController.h"
#include "library/TagWriter.h"
#include "library/WorkMonitor.h"
#include "model/NumberText.h"

namespace {

const QString trackNumberKey = QStringLiteral("TRACKNUMBER");
const QString discNumberKey = QStringLiteral("DISCNUMBER");
const QString trackKey = QStringLiteral("TRACK");

/// The keys to write into the record's file for one edited field.
PropertyMap changesFor(const AudioFile& record, const QString& key, const QString& value)
{
    const auto track = NumberText::split(record.trackNumber);
    const auto disc = NumberText::split(record.discNumber);
    if (key == QLatin1String("TRACKNUM"))
        return {{trackNumberKey, NumberText::join(value, track.total)}, {trackKey, value}};
    if (key == QLatin1String("TRACKTOTAL")) {
        PropertyMap changes{{trackNumberKey, NumberText::join(track.num, value)}};
        if (value.isEmpty())
            changes[trackKey].clear();
        return changes;
    }
    if (key == QLatin1String("DISCNUM"))
        return {{discNumberKey, NumberText::join(value, disc.total)}};
    if (key == QLatin1String("DISCTOTAL"))
        return {{discNumberKey, NumberText::join(disc.num, value)}};
    return {{key, value}};
}

} // namespace

FieldEditor::FieldEditor(ArrayController& list, TagWriter& writer, WorkMonitor& monitor)
    : list_(list), writer_(writer), monitor_(monitor)
{
}

void FieldEditor::applyEdits(const QList<FieldEdit>& edits)
{
    const auto records = list_.selectedObjects();
    if (records.empty())
        return;
    WorkLoop::run(monitor_, records, [&](const AudioFilePtr& record) { apply(edits, *record); });
    list_.reloadData();
}

void FieldEditor::apply(const QList<FieldEdit>& edits, AudioFile& record)
{
    AudioFile edited = record;
    PropertyMap changes;
    for (const auto& edit : edits) {
        const PropertyMap more = changesFor(edited, edit.key, edit.value);
        PropertyMap full = edited.propertyMap();
        full.insert(more);
        edited.setFromPropertyMap(full);
        changes.insert(more);
    }
    if (writer_.writeTags(record, changes))
        record = edited;
}
