#pragma once

#include <QHeaderView>

class QMenu;

/// The heading of the list of files: which columns are shown, how wide, in which order, and by which the list is sorted.
/// The column of file names takes the room that the others leave, while all together are as wide as the list.
class ColumnHeader : public QHeaderView {
    Q_OBJECT

public:
    explicit ColumnHeader(QWidget* parent = nullptr);

    /// Lays the columns out as they are at first; to be called when the header has its model.
    void layOut();
    /// Takes what saveState has given, unless that is damaged or empty.
    void restore(const QByteArray& state);
    /// One checkable entry for each column that may be hidden.
    void fillMenu(QMenu& menu);
    /// The list is in the order of no column.
    void clearSortMark();

    /// The list is shown with so much room, in pixels. The columns take all of it if nothing has been restored.
    void fit(int room);
    /// The room has changed.
    void keepFitting(int roomBefore, int room);

private:
    bool isLaidOut_ = false;
    /// Whether the columns are together as wide as the list, or would be if they could be as narrow as that.
    bool fill_ = false;
    bool isFitting_ = false;
};
