#include "library/ui/QuickLookTableView.h"

#include "library/ArrayController.h"
#include "library/ListDrops.h"
#include "library/RecordColumns.h"
#include "platform/ui/FocusRing.h"
#include "platform/ui/NameDelegate.h"

#include <QApplication>
#include <QDrag>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

struct ColumnLayout {
    int width;
    bool shown;
};

constexpr std::array<ColumnLayout, RecordColumns::Count> defaultLayout{{
    {190, true},
    {170, true},
    {140, true},
    {140, true},
    {140, false},
    {58, true},
    {58, false},
    {58, true},
    {110, false},
    {160, false},
    {90, false},
}};

constexpr double pointsPerInch = 72.0;
constexpr int cellPadding = 4;
constexpr int leastNameWidth = 120;
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
    : QTableView(parent), list_(list), drops_(drops)
{
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
    setUpHeader();
    updateRowHeight();
    connect(&list, &ArrayController::sortCleared, this, &QuickLookTableView::clearSortMark);
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

QByteArray QuickLookTableView::headerState() const
{
    return horizontalHeader()->saveState();
}

void QuickLookTableView::restoreHeaderState(const QByteArray& state)
{
    columnsFitted_ = horizontalHeader()->restoreState(state);
}

void QuickLookTableView::addColumnActions(QMenu& menu)
{
    for (int column = RecordColumns::FileName + 1; column < RecordColumns::Count; ++column) {
        auto* action = menu.addAction(RecordColumns::heading(column));
        action->setCheckable(true);
        action->setChecked(!isColumnHidden(column));
        connect(action, &QAction::toggled, this, [this, column](bool shown) { setColumnHidden(column, !shown); });
    }
}

void QuickLookTableView::setUpHeader()
{
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    auto* header = horizontalHeader();
    header->setSectionsMovable(true);
    header->setHighlightSections(false);
    header->setStretchLastSection(false);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    for (int column = 0; column < RecordColumns::Count; ++column) {
        const auto& layout = defaultLayout[static_cast<std::size_t>(column)];
        setColumnWidth(column, layout.width);
        setColumnHidden(column, !layout.shown);
    }
    setSortingEnabled(true);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        QMenu menu;
        addColumnActions(menu);
        menu.exec(horizontalHeader()->mapToGlobal(position));
    });
}

void QuickLookTableView::fitColumns()
{
    const int left = viewport()->width() - horizontalHeader()->length();
    if (left > 0)
        setColumnWidth(RecordColumns::FileName, columnWidth(RecordColumns::FileName) + left);
}

void QuickLookTableView::keepFitting(int widthBefore)
{
    const int length = horizontalHeader()->length();
    if (length <= widthBefore)
        columnsFill_ = length == widthBefore;
    if (!columnsFill_ || !isVisible())
        return;
    const int nameWidth = columnWidth(RecordColumns::FileName);
    const int fitting = nameWidth + viewport()->width() - length;
    setColumnWidth(RecordColumns::FileName, std::max(fitting, std::min(nameWidth, leastNameWidth)));
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

void QuickLookTableView::clearSortMark()
{
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
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
    // What is current without being selected, the step to it would leave so.
    if (isStep(*event) && !list_.selection().hasSelection())
        list_.selection().setCurrentIndex({}, QItemSelectionModel::NoUpdate);
    // Space alone would select the current row as well; with Control it picks single rows, as in any list.
    if (!space || event->modifiers().testFlag(Qt::ControlModifier))
        QTableView::keyPressEvent(event);
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
        setDropMark(DropMark::None);
        event->ignore();
        return;
    case ListDrops::Operation::Copy:
        setDropMark(DropMark::WholeList);
        event->setDropAction(Qt::CopyAction);
        break;
    case ListDrops::Operation::Move:
        setDropMark(DropMark::Gap, gapAt(event->position().toPoint()));
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
    setDropMark(DropMark::None);
    QTableView::dragLeaveEvent(event);
}

void QuickLookTableView::dropEvent(QDropEvent* event)
{
    const bool own = event->source() == this;
    const int gap = gapAt(event->position().toPoint());
    answerDrag(event);
    setDropMark(DropMark::None);
    stopAutoScroll();
    setState(NoState);
    if (event->isAccepted())
        drops_.acceptDrop(*event->mimeData(), own, gap);
}

void QuickLookTableView::setDropMark(DropMark mark, int gap)
{
    dropMark_ = mark;
    dropGap_ = gap;
    viewport()->update();
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
    if (dropMark_ != DropMark::None)
        paintDropMark(painter);
}

void QuickLookTableView::paintFocus(QPainter& painter) const
{
    const QModelIndex current = currentIndex();
    if (!current.isValid()) {
        FocusRing::paint(painter, viewport()->rect(), palette());
        return;
    }
    const QItemSelection row(current.siblingAtColumn(0), current.siblingAtColumn(RecordColumns::Count - 1));
    const bool isSelected = list_.selection().isSelected(current);
    QColor colour = palette().color(isSelected ? QPalette::HighlightedText : QPalette::Highlight);
    if (isSelected)
        colour.setAlpha(focusOpacity);
    painter.setPen(colour);
    painter.drawRect(visualRegionForSelection(row).boundingRect().adjusted(1, 1, -2, -2));
}

void QuickLookTableView::paintDropMark(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Highlight);
    painter.setPen(QPen(accent, 2));
    if (dropMark_ == DropMark::WholeList) {
        painter.drawRoundedRect(QRectF(viewport()->rect()).adjusted(2, 2, -2, -2), 4, 4);
        return;
    }
    const int lastRow = list_.rowCount() - 1;
    const int y =
        dropGap_ <= lastRow ? rowViewportPosition(dropGap_) : rowViewportPosition(lastRow) + rowHeight(lastRow);
    constexpr qreal radius = 3.5;
    const QPointF knob(radius + 2, std::max(qreal(y), radius + 1));
    painter.drawLine(QPointF(knob.x() + radius, knob.y()), QPointF(viewport()->width(), knob.y()));
    painter.drawEllipse(knob, radius, radius);
}

void QuickLookTableView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    keepFitting(event->oldSize().width());
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
    if (!std::exchange(columnsFitted_, true))
        fitColumns();
}

void QuickLookTableView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateRowHeight();
}
