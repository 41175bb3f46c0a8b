#include "library/BatchCommands.h"

#include "library/ArrayController.h"
#include "library/Messages.h"
#include "library/TagWriter.h"
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

BatchCommands::BatchCommands(ArrayController& list, TagWriter& writer, Notifier& notifier)
    : list_(list), writer_(writer), notifier_(notifier)
{
}

void BatchCommands::incrementTrackNumbers()
{
    int number = 0;
    for (const auto& record : list_.selectedObjects()) {
        const QString trackNumber = numbered(++number, record->trackNumber);
        if (writer_.writeTags(*record, {{QStringLiteral("TRACKNUMBER"), trackNumber}}))
            record->trackNumber = trackNumber;
    }
    list_.reloadData();
}

void BatchCommands::removeUnsupportedTags()
{
    for (const auto& record : list_.selectedObjects()) {
        const auto art = TaglibWrapper::getImageData(record->path, record->fileType);
        if (art && TaglibWrapper::removeUnsupportedTags(record->path))
            restoreArt(*art, record->path, record->fileType);
    }
}

void BatchCommands::restoreArt(const QByteArray& art, const QString& path, const QString& fileType)
{
    if (TaglibWrapper::setImageData(art, path, fileType))
        emit artWritten(art);
    else
        Messages::post(notifier_, Messages::unableToRestoreAlbumArt());
}

void BatchCommands::removeAllTags()
{
    for (const int row : list_.selection().rows()) {
        const AudioFilePtr record = list_.arrangedObjects()[static_cast<std::size_t>(row)];
        TaglibWrapper::setImageData({}, record->path, record->fileType);
        if (!TaglibWrapper::removeAllTags(record->path)) {
            Messages::post(notifier_, Messages::unableToRemoveAllTags());
            continue;
        }
        emit artWritten({});
        list_.replaceObject(row, emptyRecord(*record));
    }
    list_.reloadData();
}
