#include "library/TagWriter.h"

#include "library/Messages.h"
#include "platform/FileSystem.h"
#include "tagengine/TaglibWrapper.h"

TagWriter::TagWriter(Notifier& notifier) : notifier_(notifier) {}

bool TagWriter::writeTags(const AudioFile& record, const PropertyMap& changes)
{
    const QString& path = record.path;
    if (!FileSystem::isWritableFile(path) && !FileSystem::setPosixPermissions(path, repairedMode)) {
        Messages::post(notifier_, {path, Messages::fileNotWritable(), {}});
        return false;
    }
    if (TaglibWrapper::setMetadata(path, changes))
        return true;
    Messages::post(notifier_, {path, Messages::unableToUpdateTags(path), TaglibWrapper::failureReason()});
    return false;
}
