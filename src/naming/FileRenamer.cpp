#include "naming/FileRenamer.h"

#include "library/ArrayController.h"
#include "library/Messages.h"
#include "library/WorkMonitor.h"
#include "naming/FileMove.h"
#include "naming/FileNameFormat.h"
#include "naming/NameRules.h"
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
            rename(*record, format);
        } catch (const FileMove::LeadsOut&) {
            report(*record, NameRules::leadsOut());
        } catch (const std::exception& error) {
            report(*record, QString::fromLocal8Bit(error.what()));
        }
    });
    list_.reloadData();
}

QString FileRenamer::folderOf(const AudioFile& record)
{
    return record.path.chopped(std::min(record.path.size(), record.fileName.size()));
}

void FileRenamer::rename(AudioFile& record, const QStringList& format)
{
    const QString folder = folderOf(record);
    const QString name = FileNameFormat::buildFileName(format, record);
    const QString objection = NameRules::objectionTo(folder, name, format, record);
    if (!objection.isEmpty())
        return report(record, objection);
    permissions_.performWithAccess(FileSystem::absolutePath(QFileInfo(record.path).path()),
                                   [&] { FileMove::move(folder, record.fileName, name); });
    list_.renameObject(record, name, folder + name);
}

void FileRenamer::report(const AudioFile& record, const QString& reason)
{
    std::cout << "couldn't rename file at path: " << PathBytes::encode(record.path).constData()
              << ", with error: " << reason.toStdString() << std::endl;
    Messages::post(notifier_, {record.path, Messages::couldNotRename(record.path, reason), reason});
}
