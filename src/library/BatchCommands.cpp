#include "library/BatchCommands.h"

#include "library/ArrayController.h"
#include "library/Messages.h"
#include "library/TagWriter.h"
#include "library/WorkMonitor.h"
#include "model/ImageMeasure.h"
#include "model/NumberText.h"
#include "tagengine/TaglibWrapper.h"

namespace {

QString numbered(int number, const QString& trackNumber)
{
    const bool hasTotal = trackNumber.contains(QLatin1Char('/'));
    return NumberText::join(QString::number(number),
                            hasTotal ? trackNumber.section(QLatin1Char('/'), -1) : QString());
}

/// The record of a file whose tags were removed.
AudioFilePtr emptyRecord(const AudioFile& record)
{
    const auto art = TaglibWrapper::getImageData(record.path, record.fileType);
    return AudioFile::fromPropertyMap({}, record.path, measureImage(art.value_or(QByteArray())));
}

} // namespace

BatchCommands::BatchCommands(ArrayController& list, TagWriter& writer, Notifier& notifier, WorkMonitor& monitor)
    : list_(list), writer_(writer), notifier_(notifier), monitor_(monitor)
{
}

void BatchCommands::incrementTrackNumbers()
{
    int number = 0;
    WorkLoop::run(monitor_, list_.selectedObjects(), [&](const AudioFilePtr& record) {
        const QString trackNumber = numbered(++number, record->trackNumber);
        writer_.writeTags(*record, {{QStringLiteral("TRACKNUMBER"), trackNumber}});
    });
    list_.reloadData();
}

void BatchCommands::removeUnsupportedTags()
{
    WorkLoop::run(monitor_, list_.selectedObjects(),
                  [this](const AudioFilePtr& record) { removeUnsupportedTags(*record); });
}

void BatchCommands::removeUnsupportedTags(const AudioFile& record)
{
    const auto art = TaglibWrapper::getImageData(record.path, record.fileType);
    if (!art)
        return;
    if (!TaglibWrapper::removeUnsupportedTags(record.path))
        noteFailure(record, Messages::unableToRemoveUnsupportedTags());
    else if (TaglibWrapper::setImageData(*art, record.path, record.fileType))
        emit artWritten(*art);
    else
        postFailure(record, Messages::unableToRestoreAlbumArt());
}

void BatchCommands::removeAllTags()
{
    WorkLoop::run(monitor_, list_.selectedObjects(), [this](const AudioFilePtr& record) { removeAllTags(record); });
    list_.reloadData();
}

void BatchCommands::removeAllTags(const AudioFilePtr& record)
{
    TaglibWrapper::setImageData({}, record->path, record->fileType);
    if (!TaglibWrapper::removeAllTags(record->path)) {
        postFailure(*record, Messages::unableToRemoveAllTags());
        return;
    }
    emit artWritten({});
    list_.replaceObject(record, emptyRecord(*record));
}

void BatchCommands::noteFailure(const AudioFile& record, const QString& message)
{
    notifier_.noteFailure({record.path, message, TaglibWrapper::failureReason()});
}

void BatchCommands::postFailure(const AudioFile& record, const QString& message)
{
    Messages::post(notifier_, {record.path, message, TaglibWrapper::failureReason()});
}
