#include "naming/RenamePlan.h"

#include "naming/FileNameFormat.h"
#include "naming/FileRenamer.h"
#include "naming/NameRules.h"
#include "platform/FileSystem.h"
#include "platform/PathBytes.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <climits>

#include <sys/stat.h>
#include <unistd.h>

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("RenamePlan", text);
}

/// What is known of a folder that files come from or go to.
struct Folder {
    bool exists;
    bool isWritable;
    bool ignoresCase;
    long longestName;

    /// @param fileName that of a file in the folder, by which it is tried whether case counts.
    Folder(const QString& path, const QString& fileName)
    {
        const QByteArray name = PathBytes::encode(path);
        exists = ::access(name.constData(), F_OK) == 0;
        isWritable = ::access(name.constData(), W_OK | X_OK) == 0;
        const QString upper = fileName.toUpper();
        const QString other = path + QLatin1Char('/') + (upper == fileName ? fileName.toLower() : upper);
        ignoresCase = FileSystem::isSameEntry(path + QLatin1Char('/') + fileName, other);
        longestName = exists ? ::pathconf(name.constData(), _PC_NAME_MAX) : -1;
        if (longestName < 0)
            longestName = NAME_MAX;
    }
};

bool isOnDisk(const QString& path)
{
    struct stat found {};
    return ::lstat(PathBytes::encode(path).constData(), &found) == 0;
}

/// Plays the renames through, one after another, on what is on the disk now.
class Rehearsal {
public:
    /// @return why the file can't be moved; empty when it can.
    QString move(const QString& from, const QString& to, const QString& newName)
    {
        if (newName.isEmpty())
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "The name is empty"));
        if (!isOnDisk(from))
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "The file is gone"));
        if (from == to)
            return {};
        const QString objection = objectionTo(from, to, newName);
        if (objection.isEmpty()) {
            left_.insert(key(from));
            left_.remove(key(to));
            taken_.remove(key(from));
            taken_.insert(key(to));
        }
        return objection;
    }

private:
    QString objectionTo(const QString& from, const QString& to, const QString& newName)
    {
        const QFileInfo source(from);
        const Folder sourceFolder = folderAt(source.path(), source.fileName());
        const QFileInfo target(to);
        const Folder folder = folderAt(target.path(), target.fileName());
        if (!folder.exists && newName.contains(QLatin1Char('/')))
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "\"/\" leads into a folder that does not exist"));
        if (!folder.isWritable || !sourceFolder.isWritable)
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "The folder can't be written"));
        if (newName.contains(QChar::Null))
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "A character in it can't be in a name"));
        if (PathBytes::encode(target.fileName()).size() > folder.longestName)
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "The name is too long"));
        if (taken_.contains(key(to)))
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "Another selected file gets this name"));
        if (!left_.contains(key(to)) && isOnDisk(to) && !FileSystem::isSameEntry(from, to))
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "A file of this name exists"));
        return {};
    }

    const Folder& folderAt(const QString& path, const QString& fileName)
    {
        auto found = folders_.find(path);
        if (found == folders_.end())
            found = folders_.insert(path, Folder(path, fileName));
        return *found;
    }

    /// What two paths have in common that are one file to the file system.
    QString key(const QString& path)
    {
        const QFileInfo file(path);
        return folderAt(file.path(), file.fileName()).ignoresCase ? path.toCaseFolded() : path;
    }

    QHash<QString, Folder> folders_;
    QSet<QString> taken_;
    QSet<QString> left_;
};

} // namespace

RenamePlan::RenamePlan(const std::vector<AudioFilePtr>& records, const QStringList& format)
{
    Rehearsal rehearsal;
    entries_.reserve(records.size());
    for (const auto& record : records) {
        const QString folder = FileRenamer::folderOf(*record);
        const QString name = FileNameFormat::buildFileName(format, *record);
        QString objection = NameRules::objectionTo(folder, name, format, *record);
        if (objection.isEmpty())
            objection = rehearsal.move(record->path, folder + name, name);
        Entry entry{record->fileName, name, objection, {}};
        if (objection.isEmpty() && !entry.isUnchanged())
            entry.remark = NameRules::remarkOn(name);
        failing_ += !entry.objection.isEmpty();
        unchanged_ += entry.isUnchanged();
        entries_.push_back(entry);
    }
}
