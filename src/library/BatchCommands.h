#pragma once

#include "library/Deed.h"
#include "model/AudioFile.h"

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
    /// art are left alone, and not counted. The records change only in the measure of their art.
    Deed removeUnsupportedTags();
    /// Removes the cover art and every item that the property interface knows, and empties the records. A file that
    /// can't be stripped stays as it is.
    Deed removeAllTags();

signals:
    /// Files that were selected may have other art, or none.
    void artChanged();

private:
    bool removeUnsupportedTags(AudioFile& record);
    bool removeAllTags(AudioFile& record);
    void noteFailure(const AudioFile& record, const QString& message);
    void postFailure(const AudioFile& record, const QString& message);

    ArrayController& list_;
    TagWriter& writer_;
    Notifier& notifier_;
    WorkMonitor& monitor_;
};
