#include "library/TagWriter.h"

#include "library/Messages.h"
#include "platform/FileSystem.h"
#include "tagengine/TaglibWrapper.h"

#include <cerrno>

TagWriter::TagWriter(Notifier& notifier) : notifier_(notifier) {}

bool TagWriter::writeTags(const AudioFile& record, const PropertyMap& changes)
{
    const QString& path = record.path;
    if (!FileSystem::isWritableFile(path) && !FileSystem::setPosixPermissions(path, repairedMode)) {
        const QString reason = qt_error_string(errno);
        Messages::post(notifier_, {path, Messages::fileNotWritable(), reason});
        return false;
    }
    if (TaglibWrapper::setMetadata(path, changes))
        return true;
    Messages::post(notifier_, {path, Messages::unableToUpdateTags(path), TaglibWrapper::failureReason()});
    return false;
}
