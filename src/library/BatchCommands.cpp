#include "library/BatchCommands.h"

#include "library/ArrayController.h"
#include "library/Messages.h"
#include "library/TagWriter.h"
#include "library/WorkMonitor.h"
#include "model/ImageMeasure.h"
#include "model/NumberText.h"
#include "tagengine/TaglibWrapper.h"

#include <iterator>

namespace {

QString numbered(int number, const QString& trackNumber)
{
    const bool hasTotal = trackNumber.contains(QLatin1Char('/'));
    return NumberText::join(QString::number(number),
                            hasTotal ? trackNumber.section(QLatin1Char('/'), -1) : QString());
}

} // namespace

BatchCommands::BatchCommands(ArrayController& list, TagWriter& writer, Notifier& notifier, WorkMonitor& monitor)
    : list_(list), writer_(writer), notifier_(notifier), monitor_(monitor)
{
}

Deed BatchCommands::incrementTrackNumbers()
{
    const auto records = list_.selectedObjects();
    Deed deed{Deed::Kind::TracksNumbered, std::ssize(records)};
    int number = 0;
    WorkLoop::run(monitor_, records, [&](const AudioFilePtr& record) {
        const QString trackNumber = numbered(++number, record->trackNumber);
        deed.done += writer_.writeTags(*record, {{QStringLiteral("TRACKNUMBER"), trackNumber}});
    });
    list_.reloadData();
    return deed;
}

Deed BatchCommands::removeUnsupportedTags()
{
    const auto records = list_.selectedObjects();
    Deed deed{Deed::Kind::UnsupportedTagsRemoved, std::ssize(records)};
    WorkLoop::run(monitor_, records, [&](const AudioFilePtr& record) {
        if (TaglibWrapper::getImageData(record->path, record->fileType))
            deed.done += removeUnsupportedTags(*record);
        else if (TaglibWrapper::failureReason().isEmpty())
            --deed.wanted;
        else
            noteFailure(*record, Messages::unableToRemoveUnsupportedTags());
    });
    emit artChanged();
    return deed;
}

bool BatchCommands::removeUnsupportedTags(AudioFile& record)
{
    const bool isStripped = TaglibWrapper::removeUnsupportedTagsKeepingImage(record.path);
    if (!isStripped)
        noteFailure(record, Messages::unableToRemoveUnsupportedTags());
    record.imageDataLength = measureImageIn(record.path, record.fileType);
    return isStripped;
}

Deed BatchCommands::removeAllTags()
{
    const auto records = list_.selectedObjects();
    Deed deed{Deed::Kind::AllTagsRemoved, std::ssize(records)};
    WorkLoop::run(monitor_, records, [&](const AudioFilePtr& record) { deed.done += removeAllTags(*record); });
    list_.reloadData();
    emit artChanged();
    return deed;
}

bool BatchCommands::removeAllTags(AudioFile& record)
{
    const bool isStripped = TaglibWrapper::removeAllTagsAndImages(record.path);
    if (!isStripped)
        postFailure(record, Messages::unableToRemoveAllTags());
    // In its place: whoever holds the record goes on with what the file is now.
    record.readTags();
    record.imageDataLength = measureImageIn(record.path, record.fileType);
    return isStripped;
}

void BatchCommands::noteFailure(const AudioFile& record, const QString& message)
{
    notifier_.noteFailure({record.path, message, TaglibWrapper::failureReason()});
}

void BatchCommands::postFailure(const AudioFile& record, const QString& message)
{
    Messages::post(notifier_, {record.path, message, TaglibWrapper::failureReason()});
}
