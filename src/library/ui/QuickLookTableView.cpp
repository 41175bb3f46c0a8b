#include "library/ui/QuickLookTableView.h"

#include "library/ArrayController.h"
#include "library/ListDrops.h"
#include "library/RecordColumns.h"
#include "library/ui/ColumnHeader.h"
#include "platform/ui/FocusRing.h"
#include "platform/ui/NameDelegate.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double pointsPerInch = 72.0;
constexpr int cellPadding = 4;
constexpr int focusOpacity = 160;

/// The list marks the current row as a whole.
class RowDelegate : public NameDelegate {
public:
    using NameDelegate::NameDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        NameDelegate::initStyleOption(option, index);
        option->state.setFlag(QStyle::State_HasFocus, false);
    }
};

bool isStep(const QKeyEvent& event)
{
    constexpr std::array keys{Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
    return std::find(keys.begin(), keys.end(), event.key()) != keys.end()
           && !event.modifiers().testFlag(Qt::ControlModifier);
}

} // namespace

QuickLookTableView::QuickLookTableView(ArrayController& list, ListDrops& drops, QWidget* parent)
    : QTableView(parent), list_(list), drops_(drops), columns_(new ColumnHeader(this))
{
    setHorizontalHeader(columns_);
    setModel(&list);
    setSelectionModel(&list.selection());
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setTextElideMode(Qt::ElideRight);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollMode(ScrollPerPixel);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(false);
    setItemDelegate(new RowDelegate(this));
    setDefaultDropAction(Qt::MoveAction);
    setAccessibleName(tr("Files"));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    columns_->layOut();
    setSortingEnabled(true);
    updateRowHeight();
    connect(&list, &ArrayController::sortCleared, columns_, &ColumnHeader::clearSortMark);
    connect(&list, &ArrayController::countChanged, this, &QuickLookTableView::updateEmptyHint);
}

void QuickLookTableView::setEmptyHint(QWidget* hint)
{
    emptyHint_ = hint;
    hint->setParent(parentWidget());
    hint->setAcceptDrops(true);
    hint->installEventFilter(this);
    hint->raise();
    updateEmptyHint();
}

void QuickLookTableView::updateRowHeight()
{
    const int specified = static_cast<int>(std::lround(rowHeightPoints * logicalDpiY() / pointsPerInch));
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(std::max(specified, fontMetrics().height() + cellPadding));
}

void QuickLookTableView::updateEmptyHint()
{
    if (!emptyHint_)
        return;
    emptyHint_->setVisible(list_.content().empty());
    emptyHint_->setGeometry(viewport()->geometry().translated(pos()));
}

bool QuickLookTableView::eventFilter(QObject* watched, QEvent* event)
{
    constexpr std::array drags{QEvent::DragEnter, QEvent::DragMove, QEvent::DragLeave, QEvent::Drop};
    if (watched == emptyHint_ && std::find(drags.begin(), drags.end(), event->type()) != drags.end()) {
        // The hint covers the viewport, so that positions are the same.
        viewportEvent(event);
        return true;
    }
    return QTableView::eventFilter(watched, event);
}

void QuickLookTableView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit editWanted();
        return;
    }
    const bool space = event->key() == Qt::Key_Space;
    if (space && !event->isAutoRepeat())
        emit quickLookWanted();
    // Space alone would select the current row as well; with Control it picks single rows, as in any list.
    if (!space || event->modifiers().testFlag(Qt::ControlModifier))
        QTableView::keyPressEvent(event);
    // What was current already, the step to it leaves as it is.
    if (isStep(*event) && !list_.selection().hasSelection())
        list_.selection().select(currentIndex(), QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

QModelIndex QuickLookTableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const int column = std::max(currentIndex().column(), 0);
    const bool upOrDown = action == MoveUp || action == MoveDown;
    if (action == MoveHome || (upOrDown && !list_.selection().hasSelection()))
        return list_.index(0, column);
    if (action == MoveEnd)
        return list_.index(list_.rowCount() - 1, column);
    return QTableView::moveCursor(action, modifiers);
}

void QuickLookTableView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    // Of the two rows whose marks change, the base class paints one cell each.
    viewport()->update();
}

void QuickLookTableView::startDrag(Qt::DropActions)
{
    const QList<int> rows = list_.selection().rows();
    if (rows.isEmpty())
        return;
    // The receiver may ask for the data after exec has returned; Qt deletes the drag when nobody will ask any more.
    auto* drag = new QDrag(this);
    drag->setMimeData(drops_.rowDragData(rows).release());
    if (dragImage_)
        drag->setPixmap(dragImage_(*list_.arrangedObjects()[static_cast<std::size_t>(rows.first())], *this));
    // Others get copies: no drag takes a file away from where it is.
    drag->exec(Qt::CopyAction);
}

int QuickLookTableView::gapAt(const QPoint& position) const
{
    const int row = rowAt(position.y());
    if (row < 0)
        return position.y() < 0 ? 0 : list_.rowCount();
    const int middle = rowViewportPosition(row) + rowHeight(row) / 2;
    return position.y() < middle ? row : row + 1;
}

bool QuickLookTableView::isFromElsewhereInside(const QDropEvent& event) const
{
    return event.source() && event.source() != this;
}

void QuickLookTableView::answerDrag(QDropEvent* event)
{
    const bool own = event->source() == this;
    if (isFromElsewhereInside(*event)) {
        event->ignore();
        return;
    }
    switch (drops_.validateDrop(*event->mimeData(), own)) {
    case ListDrops::Operation::None:
        dropMark_.hide();
        event->ignore();
        return;
    case ListDrops::Operation::Copy:
        dropMark_.showWholeList();
        event->setDropAction(Qt::CopyAction);
        break;
    case ListDrops::Operation::Move:
        dropMark_.showGap(gapAt(event->position().toPoint()));
        event->setDropAction(Qt::MoveAction);
        break;
    }
    event->accept();
}

void QuickLookTableView::dragEnterEvent(QDragEnterEvent* event)
{
    answerDrag(event);
    // Later moves must reach the list even where the first position is refused.
    if (!isFromElsewhereInside(*event) && (event->mimeData()->hasUrls() || event->source() == this))
        event->accept();
}

void QuickLookTableView::dragMoveEvent(QDragMoveEvent* event)
{
    // The base class scrolls near the edges; its own verdict does not count.
    setState(DraggingState);
    QAbstractItemView::dragMoveEvent(event);
    answerDrag(event);
}

void QuickLookTableView::dragLeaveEvent(QDragLeaveEvent* event)
{
    dropMark_.hide();
    QTableView::dragLeaveEvent(event);
}

void QuickLookTableView::dropEvent(QDropEvent* event)
{
    const bool own = event->source() == this;
    const int gap = gapAt(event->position().toPoint());
    answerDrag(event);
    dropMark_.hide();
    stopAutoScroll();
    setState(NoState);
    if (event->isAccepted())
        drops_.acceptDrop(*event->mimeData(), own, gap);
}

void QuickLookTableView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    if (hasFocus())
        paintFocus(painter);
    if (list_.rowCount() == 0 && !list_.content().empty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, tr("No file matches the search"));
    }
    dropMark_.paint(painter);
}

void QuickLookTableView::paintFocus(QPainter& painter) const
{
    const QModelIndex current = currentIndex();
    if (!current.isValid()) {
        FocusRing::paint(painter, viewport()->rect(), palette());
        return;
    }
    const QItemSelection row(current.siblingAtColumn(0), current.siblingAtColumn(RecordColumns::Count - 1));
    const QRegion shown = visualRegionForSelection(row);
    if (shown.isEmpty())
        return;
    const bool isSelected = list_.selection().isSelected(current);
    QColor colour = palette().color(isSelected ? QPalette::HighlightedText : QPalette::Highlight);
    if (isSelected)
        colour.setAlpha(focusOpacity);
    painter.setPen(colour);
    painter.drawRect(shown.boundingRect().adjusted(1, 1, -2, -2));
}

void QuickLookTableView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    columns_->keepFitting(event->oldSize().width(), viewport()->width());
    updateEmptyHint();
}

void QuickLookTableView::moveEvent(QMoveEvent* event)
{
    QTableView::moveEvent(event);
    updateEmptyHint();
}

void QuickLookTableView::showEvent(QShowEvent* event)
{
    QTableView::showEvent(event);
    columns_->fit(viewport()->width());
}

void QuickLookTableView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateRowHeight();
}
