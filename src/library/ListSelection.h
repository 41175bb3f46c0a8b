#pragma once

#include <QItemSelectionModel>
#include <QList>

/// The selected rows of the list, whole rows only.
///
/// Says so before anything moves it, so that an edit in progress can still be written to the records that were
/// selected when it was typed.
class ListSelection : public QItemSelectionModel {
    Q_OBJECT

public:
    /// Spans a change of the rows themselves (another order, another filter), after which the selection is set
    /// again: `aboutToChange` is emitted once before it and `changed` once after it.
    class QuietChange {
    public:
        /// @param movesSelection false when the same records are selected after it: it is then not announced.
        explicit QuietChange(ListSelection& selection, bool movesSelection = true);
        ~QuietChange();
        Q_DISABLE_COPY_MOVE(QuietChange)

    private:
        ListSelection& selection_;
    };

    explicit ListSelection(QAbstractItemModel& model);

    /// Ascending, each once.
    QList<int> rows() const;
    /// Selects exactly these rows (any order) and makes the first of them current; none clears the selection.
    void setRows(QList<int> rows);

    using QItemSelectionModel::select;
    void select(const QItemSelection& selection, QItemSelectionModel::SelectionFlags command) override;
    void clear() override;

signals:
    void aboutToChange();
    void changed();

private:
    void announce();

    bool quiet_ = false;
};
