#include "library/FileLoader.h"

#include "library/ArrayController.h"
#include "library/FileFinder.h"
#include "library/Messages.h"
#include "platform/RecentDocuments.h"
#include "tagengine/TaglibWrapper.h"

#include <QMetaObject>

FileLoader::FileLoader(ArrayController& list, Notifier& notifier, RecentDocuments& recentDocuments)
    : list_(list), notifier_(notifier), recentDocuments_(recentDocuments)
{
}

bool FileLoader::openPath(const QString& path)
{
    QMetaObject::invokeMethod(this, &FileLoader::activationWanted, Qt::QueuedConnection);
    const ArrayController::AddingBatch batch(list_);
    bool allAdded = true;
    for (const auto& file : FileFinder::audioFiles(path))
        allAdded = loadFile(file) && allAdded;
    return allAdded;
}

void FileLoader::openPaths(const QStringList& paths)
{
    const ArrayController::AddingBatch batch(list_);
    for (const auto& path : paths)
        openPath(path);
}

bool FileLoader::loadFile(const QString& path)
{
    emit frontWanted();
    const auto type = TaglibWrapper::detectFileType(path);
    if (!type || !FileFinder::supportedExtensions().contains(*type))
        return refuse(Messages::unsupportedFileType());
    if (list_.anyPathContains(path))
        return refuse(Messages::fileAlreadyOpen());
    auto record = AudioFile::fromFile(path);
    if (!record)
        return refuse(Messages::couldNotOpen(path));
    list_.addObject(std::move(record));
    recentDocuments_.noteNewRecentDocument(path);
    return true;
}

bool FileLoader::refuse(const QString& message)
{
    Messages::post(notifier_, message);
    return false;
}
