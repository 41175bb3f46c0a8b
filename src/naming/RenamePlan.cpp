#include "naming/RenamePlan.h"

#include "naming/FileNameFormat.h"
#include "naming/FileRenamer.h"

#include <QCoreApplication>
#include <QFile>
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

/// What is known of a folder that files go to.
struct Folder {
    bool exists;
    bool isWritable;
    long longestName;

    explicit Folder(const QByteArray& path)
        : exists(::access(path.constData(), F_OK) == 0), isWritable(::access(path.constData(), W_OK | X_OK) == 0),
          longestName(exists ? ::pathconf(path.constData(), _PC_NAME_MAX) : -1)
    {
        if (longestName < 0)
            longestName = NAME_MAX;
    }
};

/// Plays the renames through, one after another, on what is on the disk now.
class Rehearsal {
public:
    /// @return why the file can't be moved; empty when it can.
    QString move(const QString& from, const QString& to, const QString& newName)
    {
        if (newName.isEmpty())
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "The name is empty"));
        if (from == to)
            return {};
        const QString objection = objectionTo(from, to, newName);
        if (objection.isEmpty()) {
            left_.insert(from);
            left_.remove(to);
            taken_.insert(to);
            taken_.remove(from);
        }
        return objection;
    }

private:
    QString objectionTo(const QString& from, const QString& to, const QString& newName)
    {
        const auto slash = to.lastIndexOf(QLatin1Char('/'));
        const Folder& folder = folderAt(to.first(slash));
        if (!folder.exists && newName.contains(QLatin1Char('/')))
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "\"/\" leads into a folder that does not exist"));
        if (!folder.exists)
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "The folder does not exist"));
        if (!folder.isWritable)
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "The folder can't be written"));
        if (QFile::encodeName(to.sliced(slash + 1)).size() > folder.longestName)
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "The name is too long"));
        if (taken_.contains(to))
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "Another selected file gets this name"));
        if (!left_.contains(to) && isOnDisk(from, to))
            return translated(QT_TRANSLATE_NOOP("RenamePlan", "A file of this name exists"));
        return {};
    }

    const Folder& folderAt(const QString& path)
    {
        auto found = folders_.find(path);
        if (found == folders_.end())
            found = folders_.insert(path, Folder(path.isEmpty() ? QByteArray("/") : QFile::encodeName(path)));
        return *found;
    }

    /// A file system that ignores case finds a file under its own new name.
    static bool isOnDisk(const QString& from, const QString& to)
    {
        struct stat target {};
        struct stat source {};
        if (::lstat(QFile::encodeName(to).constData(), &target) != 0)
            return false;
        const bool isItself = from.compare(to, Qt::CaseInsensitive) == 0
                              && ::lstat(QFile::encodeName(from).constData(), &source) == 0
                              && source.st_ino == target.st_ino && source.st_dev == target.st_dev;
        return !isItself;
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
        const QString name = FileNameFormat::buildFileName(format, *record);
        const QString path = FileRenamer::newPath(*record, name);
        const Entry entry{record->fileName, name, rehearsal.move(record->path, path, name)};
        failing_ += !entry.objection.isEmpty();
        unchanged_ += entry.isUnchanged();
        entries_.push_back(entry);
    }
}
