#include "library/ListSelection.h"

#include <QScopedValueRollback>

#include <algorithm>

ListSelection::QuietChange::QuietChange(ListSelection& selection, bool movesSelection) : selection_(selection)
{
    if (movesSelection)
        selection_.announce();
    selection_.quiet_ = true;
}

ListSelection::QuietChange::~QuietChange()
{
    selection_.quiet_ = false;
    emit selection_.changed();
}

ListSelection::ListSelection(QAbstractItemModel& model) : QItemSelectionModel(&model)
{
    connect(this, &QItemSelectionModel::selectionChanged, this, [this] {
        if (!quiet_)
            emit changed();
    });
}

QList<int> ListSelection::rows() const
{
    QList<int> rows;
    for (const auto& range : selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void ListSelection::setRows(QList<int> rows)
{
    if (rows.isEmpty()) {
        select(QItemSelection(), ClearAndSelect);
        return;
    }
    std::sort(rows.begin(), rows.end());
    const int lastColumn = model()->columnCount() - 1;
    QItemSelection selection;
    for (qsizetype first = 0; first < rows.size();) {
        qsizetype last = first;
        while (last + 1 < rows.size() && rows[last + 1] <= rows[last] + 1)
            ++last;
        selection.append(QItemSelectionRange(model()->index(rows[first], 0), model()->index(rows[last], lastColumn)));
        first = last + 1;
    }
    select(selection, ClearAndSelect);
    setCurrentIndex(model()->index(rows.first(), 0), NoUpdate);
}

void ListSelection::select(const QItemSelection& selection, QItemSelectionModel::SelectionFlags command)
{
    if (command != NoUpdate)
        announce();
    QItemSelectionModel::select(selection, command);
}

void ListSelection::clear()
{
    announce();
    QItemSelectionModel::clear();
}

void ListSelection::announce()
{
    if (quiet_)
        return;
    // What an edit sets off while it is written must not announce another change.
    const QScopedValueRollback guard(quiet_, true);
    emit aboutToChange();
}
