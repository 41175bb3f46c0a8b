#include "naming/FileRenamer.h"

#include "library/ArrayController.h"
#include "library/Messages.h"
#include "library/WorkMonitor.h"
#include "naming/FileNameFormat.h"
#include "platform/FileSystem.h"
#include "platform/PathBytes.h"
#include "sandbox/PermissionManager.h"

#include <QFileInfo>

#include <algorithm>
#include <exception>
#include <iostream>

FileRenamer::FileRenamer(ArrayController& list, PermissionManager& permissions, Notifier& notifier,
                         WorkMonitor& monitor)
    : list_(list), permissions_(permissions), notifier_(notifier), monitor_(monitor)
{
}

void FileRenamer::renameFiles(const std::vector<AudioFilePtr>& records, const QStringList& format)
{
    WorkLoop::run(monitor_, records, [&](const AudioFilePtr& record) {
        try {
            rename(record, FileNameFormat::buildFileName(format, *record));
        } catch (const std::exception& error) {
            const QString reason = QString::fromLocal8Bit(error.what());
            std::cout << "couldn't rename file at path: " << PathBytes::encode(record->path).constData()
                      << ", with error: " << reason.toStdString() << std::endl;
            Messages::post(notifier_, {record->path, Messages::couldNotRename(record->path, reason), reason});
        }
    });
    list_.reloadData();
}

QString FileRenamer::newPath(const AudioFile& record, const QString& newName)
{
    return record.path.chopped(std::min(record.path.size(), record.fileName.size())) + newName;
}

void FileRenamer::rename(const AudioFilePtr& record, const QString& newName)
{
    const QString path = newPath(*record, newName);
    permissions_.performWithAccess(FileSystem::absolutePath(QFileInfo(record->path).path()),
                                   [&] { FileSystem::moveItem(record->path, path); });
    list_.renameObject(*record, newName, path);
}
