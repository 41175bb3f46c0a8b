#include "library/FileLoader.h"

#include "library/ArrayController.h"
#include "library/FileFinder.h"
#include "library/Messages.h"
#include "library/WorkMonitor.h"
#include "platform/RecentDocuments.h"
#include "tagengine/TaglibWrapper.h"

#include <QMetaObject>

FileLoader::FileLoader(ArrayController& list, Notifier& notifier, RecentDocuments& recentDocuments,
                       WorkMonitor& monitor)
    : list_(list), notifier_(notifier), recentDocuments_(recentDocuments), monitor_(monitor)
{
}

bool FileLoader::openPaths(const QStringList& paths)
{
    QStringList files;
    for (const auto& path : paths) {
        QMetaObject::invokeMethod(this, &FileLoader::activationWanted, Qt::QueuedConnection);
        files += FileFinder::audioFiles(path, [this](const QString& skipped, const QString& reason) {
            notifier_.noteFailure({skipped, Messages::couldNotOpen(skipped), reason});
        });
    }
    const ArrayController::AddingBatch batch(list_);
    bool allAdded = true;
    QStringList added;
    const bool allTried = WorkLoop::read(monitor_, files, [&](const QString& file) {
        if (addFile(file))
            added.append(file);
        else
            allAdded = false;
    });
    // In the middle of the work each few of them would cost a write of the whole list.
    for (const auto& file : added)
        recentDocuments_.noteNewRecentDocument(file);
    return allTried && allAdded;
}

bool FileLoader::loadFile(const QString& path)
{
    const bool isAdded = addFile(path);
    if (isAdded)
        recentDocuments_.noteNewRecentDocument(path);
    return isAdded;
}

bool FileLoader::addFile(const QString& path)
{
    emit frontWanted();
    const auto type = TaglibWrapper::detectFileType(path);
    if (!type || !FileFinder::supportedExtensions().contains(*type))
        return refuse({path, Messages::unsupportedFileType(), {}});
    if (list_.anyPathContains(path))
        return refuse({path, Messages::fileAlreadyOpen(), {}});
    auto record = AudioFile::fromFile(path);
    if (!record)
        return refuse({path, Messages::couldNotOpen(path), TaglibWrapper::failureReason()});
    list_.addObject(std::move(record));
    return true;
}

bool FileLoader::refuse(const Failure& failure)
{
    Messages::post(notifier_, failure);
    return false;
}
