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
    /// FileNameFormat). A "/" in a name leads into a subfolder; a name that leads out of the folder, or into which a tag
    /// brings a line break, is refused (see NameRules). No file is ever replaced. A file that can't be renamed keeps
    /// its name; the reason is posted, and printed on standard output.
    void renameFiles(const std::vector<AudioFilePtr>& records, const QStringList& format);

    /// The folder in which new names of the record's file are looked up: what is left of its path without its file
    /// name, with the "/" at the end; empty for the current folder.
    static QString folderOf(const AudioFile& record);

private:
    void rename(AudioFile& record, const QStringList& format);
    void report(const AudioFile& record, const QString& reason);

    ArrayController& list_;
    PermissionManager& permissions_;
    Notifier& notifier_;
    WorkMonitor& monitor_;
};
