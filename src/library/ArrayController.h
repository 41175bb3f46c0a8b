#pragma once

#include "library/ListSelection.h"
#include "library/PathIndex.h"
#include "library/TextFold.h"
#include "model/AudioFile.h"

#include <QAbstractTableModel>
#include <QStringMatcher>

#include <vector>

/// The records of the open files: their order, the filter over them, and the selection among those that pass it.
///
/// `content` is every record in list order; `arrangedObjects` those of them that pass the filter, in the same order,
/// one row each. Sorting and reordering change the list order itself. Rows are indexes into the arranged objects.
class ArrayController : public QAbstractTableModel {
    Q_OBJECT

public:
    /// While one lives, added records are announced to the views together at its end.
    class AddingBatch {
    public:
        explicit AddingBatch(ArrayController& list);
        ~AddingBatch();
        Q_DISABLE_COPY_MOVE(AddingBatch)

    private:
        ArrayController& list_;
    };

    ArrayController();

    const std::vector<AudioFilePtr>& content() const { return content_; }
    const std::vector<AudioFilePtr>& arrangedObjects() const { return arranged_; }
    ListSelection& selection() { return selection_; }
    const ListSelection& selection() const { return selection_; }
    /// In arranged order.
    std::vector<AudioFilePtr> selectedObjects() const;
    /// Selects those of the records that are in the arranged list.
    void setSelectedObjects(const std::vector<AudioFilePtr>& records);

    /// Whether the path of any record, shown or not, contains @p path as a substring, case-sensitively.
    bool anyPathContains(const QString& path) const { return paths_.anyContains(path); }

    /// Appends a record, or puts it in its place when the list is sorted.
    void addObject(AudioFilePtr record);
    /// Removes records by their rows (ascending).
    void removeObjectsAtArrangedObjectIndexes(const QList<int>& rows);
    /// Notes that the record's file has another name and path now. The views follow with reloadData.
    void renameObject(AudioFile& record, const QString& fileName, const QString& path);
    /// Moves the given rows (ascending) to the gap before row @p gap. The list is no longer sorted after it.
    /// @return the row at which the last of them ended; 0 when there were none.
    int moveRows(const QList<int>& rows, int gap);
    /// Tells the views that any cell may have changed; selection and order stay.
    void reloadData();

    /// Shows only the records whose file name or text fields contain every word of the text (see TextFold).
    /// Rows that stay keep their selection.
    void setFilterText(const QString& text);
    /// Orders the list by a column; -1 leaves the order as it is and keeps it from then on.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

signals:
    /// The list is no longer in the order of a column.
    void sortCleared();
    /// Emitted whenever the number of records, shown or in all, may have changed.
    void countChanged();

private:
    void endAdding();
    void addSorted(const std::vector<AudioFilePtr>& added);
    void showAdded(const std::vector<AudioFilePtr>& added);
    bool passesFilter(const AudioFile& record) const;
    /// Sets the arranged objects to those of @p candidates that pass the filter, after @p change has altered list
    /// order or filter, keeping the selection.
    template <class Change>
    void rearrange(Change change, const std::vector<AudioFilePtr>& candidates);
    template <class Change, class IsShown>
    void resetRows(Change change, const std::vector<AudioFilePtr>& candidates, IsShown isShown);

    std::vector<AudioFilePtr> content_;
    std::vector<AudioFilePtr> arranged_;
    std::vector<AudioFilePtr> added_;
    PathIndex paths_;
    TextFold fold_;
    QString filterText_;
    std::vector<QStringMatcher> filterWords_;
    int batches_ = 0;
    int sortColumn_ = -1;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
    ListSelection selection_;
};
