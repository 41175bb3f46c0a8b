#pragma once

#include "library/Deed.h"
#include "model/AudioFile.h"

#include <QByteArray>
#include <QObject>

class ArrayController;
class Notifier;
class TagWriter;
class WorkMonitor;

/// Commands that change the tags of all selected files in one go, in list order, one file after another. A failure
/// stops only the file concerned. Each returns in how many files it did all that it should.
class BatchCommands : public QObject {
    Q_OBJECT

public:
    BatchCommands(ArrayController& list, TagWriter& writer, Notifier& notifier, WorkMonitor& monitor);

    /// Numbers the selected files 1, 2, 3, …; each keeps its own total. A file that can't be written keeps its number,
    /// and its place in the count.
    Deed incrementTrackNumbers();
    /// Removes every item that has no property key from each selected file with cover art, which stays; files without
    /// art are left alone, and not counted. No record changes.
    Deed removeUnsupportedTags();
    /// Removes the cover art and every item that the property interface knows, and empties the records. A record whose
    /// file can't be stripped stays, though its file may have lost the art.
    Deed removeAllTags();

signals:
    /// This is now the art of the file handled last; empty when it has none.
    void artWritten(const QByteArray& bytes);

private:
    bool removeUnsupportedTags(const AudioFile& record, const QByteArray& art);
    bool removeAllTags(const AudioFilePtr& record);
    void noteFailure(const AudioFile& record, const QString& message);
    void postFailure(const AudioFile& record, const QString& message);

    ArrayController& list_;
    TagWriter& writer_;
    Notifier& notifier_;
    WorkMonitor& monitor_;
};
