#pragma once

#include "model/AudioFile.h"

#include <QStringList>

#include <vector>

class ArrayController;
class Notifier;
class PermissionManager;
class WorkMonitor;

/// Renames files by their tags.
class FileRenamer {
public:
    FileRenamer(ArrayController& list, PermissionManager& permissions, Notifier& notifier, WorkMonitor& monitor);

    /// Gives the files of records in the list, one after another, the names that the format builds for them (see
    /// FileNameFormat). A "/" in a name leads into a subfolder. No file is ever replaced. A file that can't be renamed
    /// keeps its name; the reason is posted, and printed on standard output.
    void renameFiles(const std::vector<AudioFilePtr>& records, const QStringList& format);

    /// The path that the record's file would get; the folder is what is left of its path without its file name.
    static QString newPath(const AudioFile& record, const QString& newName);

private:
    void rename(const AudioFilePtr& record, const QString& newName);

    ArrayController& list_;
    PermissionManager& permissions_;
    Notifier& notifier_;
    WorkMonitor& monitor_;
};
