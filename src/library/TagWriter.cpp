#include "library/TagWriter.h"

#include "library/Messages.h"
#include "platform/FileSystem.h"
#include "tagengine/TaglibWrapper.h"

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
    if (TaglibWrapper::setMetadata(path, changes))
        return true;
    // The engine makes it writable where it can.
    const QString message =
        FileSystem::isWritableFile(path) ? Messages::unableToUpdateTags(path) : Messages::fileNotWritable();
    Messages::post(notifier_, {path, message, TaglibWrapper::failureReason()});
    return false;
}
