#pragma once

#include "model/AudioFile.h"

#include <QStringList>

class ArrayController;
class Notifier;
class PermissionManager;
class WorkMonitor;

/// Renames the selected files by their tags.
class FileRenamer {
public:
    FileRenamer(ArrayController& list, PermissionManager& permissions, Notifier& notifier, WorkMonitor& monitor);

    /// Gives every selected file, in list order, the name that the format builds for it (see FileNameFormat). A "/"
    /// in a name leads into a subfolder. No file is ever replaced. A file that can't be renamed keeps its name; the
    /// reason is posted, and printed on standard output.
    void renameFiles(const QStringList& format);

    /// The path that the record's file would get; the folder is what is left of its path without its file name.
    static QString newPath(const AudioFile& record, const QString& newName);

private:
    void rename(const AudioFilePtr& record, const QString& newName);

    ArrayController& list_;
    PermissionManager& permissions_;
    Notifier& notifier_;
    WorkMonitor& monitor_;
};
