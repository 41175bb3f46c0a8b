#include "library/FieldEditor.h"

#include "library/ArrayController.h"
#include "library/TagWriter.h"
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

FieldEditor::FieldEditor(ArrayController& list, TagWriter& writer) : list_(list), writer_(writer) {}

void FieldEditor::applyEdit(const QString& key, const QString& value)
{
    const auto records = list_.selectedObjects();
    if (records.empty())
        return;
    for (const auto& record : records) {
        const PropertyMap changes = changesFor(*record, key, value);
        if (!writer_.writeTags(*record, changes))
            continue;
        PropertyMap full = record->propertyMap();
        full.insert(changes);
        record->setFromPropertyMap(full);
    }
    list_.reloadData();
}
