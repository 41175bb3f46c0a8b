#pragma once

#include "library/ui/DropMark.h"

#include <QTableView>

#include <functional>

class ArrayController;
class AudioFile;
class ColumnHeader;
class ListDrops;

/// The table of open files: one row a record, whole rows selected, rows reordered by dragging, files dropped in.
class QuickLookTableView : public QTableView {
    Q_OBJECT

public:
    /// The height of a row at the screen's logical resolution.
    static constexpr double rowHeightPoints = 17.0;

    QuickLookTableView(ArrayController& list, ListDrops& drops, QWidget* parent = nullptr);

    /// Shown over the empty table. A sibling of the table, not a part of it: assistive technology knows cells only in a
    /// table. To be called when the table has a parent; what is dropped on the hint is dropped on the table.
    void setEmptyHint(QWidget* hint);

    /// Makes the picture that hangs at the pointer while rows are dragged, from the first of them.
    using DragImage = std::function<QPixmap(const AudioFile& record, const QWidget& list)>;
    void setDragImage(DragImage make) { dragImage_ = std::move(make); }

    ColumnHeader& columns() { return *columns_; }

signals:
    /// Return was pressed on the list.
    void editWanted();
    /// Space was pressed on the list.
    void quickLookWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// The list is one of rows: Home and End go to its ends, and the first step into it selects its first row.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void updateRowHeight();
    void updateEmptyHint();
    void paintFocus(QPainter& painter) const;
    /// The gap that is nearest: there is no dropping onto a row.
    int gapAt(const QPoint& position) const;
    /// Whether another part of this program is the source: the list takes nothing from it, and asks it for nothing.
    bool isFromElsewhereInside(const QDropEvent& event) const;
    void answerDrag(QDropEvent* event);

    ArrayController& list_;
    ListDrops& drops_;
    DragImage dragImage_;
    QWidget* emptyHint_ = nullptr;
    ColumnHeader* columns_;
    DropMark dropMark_{*this};
};
