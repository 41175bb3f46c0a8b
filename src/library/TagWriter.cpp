#include "library/TagWriter.h"

#include "library/Messages.h"
#include "platform/FileSystem.h"
#include "tagengine/TaglibWrapper.h"

#include <cerrno>

TagWriter::TagWriter(Notifier& notifier) : notifier_(notifier) {}

bool TagWriter::writeTags(AudioFile& record, const PropertyMap& changes)
{
    const bool isWritten = write(record.path, changes);
    if (!record.readTags() && isWritten) {
        PropertyMap full = record.propertyMap();
        full.insert(changes);
        record.setFromPropertyMap(full);
    }
    return isWritten;
}

bool TagWriter::write(const QString& path, const PropertyMap& changes)
{
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
