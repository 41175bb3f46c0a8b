#include "library/FieldEditor.h"

#include "library/ArrayController.h"
#include "library/TagWriter.h"
#include "library/WorkMonitor.h"
#include "model/NumberText.h"

namespace {

const QString trackNumberKey = QStringLiteral("TRACKNUMBER");
const QString discNumberKey = QStringLiteral("DISCNUMBER");
const QString trackKey = QStringLiteral("TRACK");

/// The halves of a number as the file has it, in which "Various" is no marker.
NumberText::Parts halves(const QString& text)
{
    return text == NumberText::various ? NumberText::Parts{text, {}} : NumberText::split(text);
}

/// What is typed as a number, which may bring its total along.
NumberText::Parts typedHalves(const QString& value, const QString& total)
{
    const auto typed = halves(value);
    return {typed.num, typed.total.isEmpty() ? total : typed.total};
}

/// A number with another total. The 0 that stands for a missing number goes with the total.
QString withTotal(const QString& number, const QString& total)
{
    const bool isPlaceholder = total.isEmpty() && number == QLatin1Char('0');
    return isPlaceholder ? QString() : NumberText::join(number, total);
}

/// The keys to write into the record's file for one edited field.
PropertyMap changesFor(const AudioFile& record, const QString& key, const QString& value)
{
    const auto track = halves(record.trackNumber);
    const auto disc = halves(record.discNumber);
    if (key == QLatin1String("TRACKNUM")) {
        const auto typed = typedHalves(value, track.total);
        return {{trackNumberKey, NumberText::join(typed.num, typed.total)}, {trackKey, typed.num}};
    }
    if (key == QLatin1String("TRACKTOTAL")) {
        PropertyMap changes{{trackNumberKey, withTotal(track.num, value)}};
        if (value.isEmpty())
            changes[trackKey].clear();
        return changes;
    }
    if (key == QLatin1String("DISCNUM")) {
        const auto typed = typedHalves(value, disc.total);
        return {{discNumberKey, NumberText::join(typed.num, typed.total)}};
    }
    if (key == QLatin1String("DISCTOTAL"))
        return {{discNumberKey, withTotal(disc.num, value)}};
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
    writer_.writeTags(record, changes);
}
