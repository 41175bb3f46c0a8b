#include "library/ui/ColumnHeader.h"

#include "library/RecordColumns.h"

#include <QMenu>
#include <QScopedValueRollback>

#include <algorithm>
#include <array>
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

constexpr int leastNameWidth = 120;

} // namespace

ColumnHeader::ColumnHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsMovable(true);
    setSectionsClickable(true);
    setHighlightSections(false);
    setStretchLastSection(false);
    setSortIndicatorShown(true);
    clearSortMark();
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
        QMenu menu;
        fillMenu(menu);
        menu.exec(mapToGlobal(position));
    });
    connect(this, &QHeaderView::sectionResized, this, [this] { fill_ = fill_ && isFitting_; });
}

void ColumnHeader::layOut()
{
    for (int column = 0; column < RecordColumns::Count; ++column) {
        const auto& layout = defaultLayout[static_cast<std::size_t>(column)];
        resizeSection(column, layout.width);
        setSectionHidden(column, !layout.shown);
    }
}

void ColumnHeader::restore(const QByteArray& state)
{
    isLaidOut_ = restoreState(state);
}

void ColumnHeader::fillMenu(QMenu& menu)
{
    for (int column = RecordColumns::FileName + 1; column < RecordColumns::Count; ++column) {
        auto* action = menu.addAction(RecordColumns::heading(column));
        action->setCheckable(true);
        action->setChecked(!isSectionHidden(column));
        connect(action, &QAction::toggled, this, [this, column](bool shown) { setSectionHidden(column, !shown); });
    }
}

void ColumnHeader::clearSortMark()
{
    setSortIndicator(-1, Qt::AscendingOrder);
}

void ColumnHeader::fit(int room)
{
    const int left = room - length();
    if (!std::exchange(isLaidOut_, true) && left > 0)
        resizeSection(RecordColumns::FileName, sectionSize(RecordColumns::FileName) + left);
}

void ColumnHeader::keepFitting(int roomBefore, int room)
{
    if (length() <= roomBefore)
        fill_ = length() == roomBefore;
    if (!fill_ || !isVisible())
        return;
    const int nameWidth = sectionSize(RecordColumns::FileName);
    const int fitting = nameWidth + room - length();
    const QScopedValueRollback byItself(isFitting_, true);
    resizeSection(RecordColumns::FileName, std::max(fitting, std::min(nameWidth, leastNameWidth)));
}
