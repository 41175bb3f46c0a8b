#pragma once

#include <QMimeData>
#include <QString>

#include <memory>

class ArrayController;
class DropFolder;
class FileLoader;
class Notifier;

/// Drags over the list, without a widget: what a drop would do, and doing it. A drop lands in the gap before a row.
class ListDrops {
public:
    enum class Operation { None, Copy, Move };

    /// The MIME type under which rows dragged inside the list carry their row indexes.
    static const QString rowDragType;

    ListDrops(ArrayController& list, FileLoader& loader, DropFolder& dropFolder, Notifier& notifier);

    /// What a drag of these rows (ascending) carries: the row indexes for this list, and the files for others to copy.
    std::unique_ptr<QMimeData> rowDragData(const QList<int>& rows) const;

    /// Rows of this list may be moved unless every row is selected; from elsewhere, audio files and folders may be
    /// added, judged by the first local file, and audio data without a file.
    Operation validateDrop(const QMimeData& data, bool fromThisList) const;

    /// Reorders the list, or adds the dropped files and folders one after another.
    void acceptDrop(const QMimeData& data, bool fromThisList, int gap);

private:
    void reorder(const QMimeData& data, int gap);
    void receive(const QMimeData& data);

    ArrayController& list_;
    FileLoader& loader_;
    DropFolder& dropFolder_;
    Notifier& notifier_;
};
