#include "library/ui/DropMark.h"

#include <QPainter>
#include <QTableView>

#include <algorithm>

void DropMark::show(Kind kind, int gap)
{
    kind_ = kind;
    gap_ = gap;
    table_.viewport()->update();
}

void DropMark::paint(QPainter& painter) const
{
    if (kind_ == Kind::None)
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(table_.palette().color(QPalette::Highlight), 2));
    const QRect place = table_.viewport()->rect();
    if (kind_ == Kind::WholeList) {
        painter.drawRoundedRect(QRectF(place).adjusted(2, 2, -2, -2), 4, 4);
        return;
    }
    const int lastRow = table_.model()->rowCount() - 1;
    const int y = gap_ <= lastRow ? table_.rowViewportPosition(gap_)
                                  : table_.rowViewportPosition(lastRow) + table_.rowHeight(lastRow);
    constexpr qreal radius = 3.5;
    const QPointF knob(radius + 2, std::max(qreal(y), radius + 1));
    painter.drawLine(QPointF(knob.x() + radius, knob.y()), QPointF(place.width(), knob.y()));
    painter.drawEllipse(knob, radius, radius);
}
