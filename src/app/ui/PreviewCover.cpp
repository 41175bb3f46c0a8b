#include "app/ui/PreviewCover.h"

#include "app/ui/Icons.h"

#include <QPainter>

namespace {

constexpr qreal cornerRadius = 4.0;
constexpr int paleness = 8;

} // namespace

PreviewCover::PreviewCover(QWidget* parent) : AlbumArtView(parent)
{
    connect(this, &AlbumArtView::imageChanged, this, [this] { decoded_ = true; });
}

void PreviewCover::setCover(const QByteArray& bytes)
{
    setArt({});
    decoded_ = false;
    setArt(bytes);
}

void PreviewCover::paintEvent(QPaintEvent* event)
{
    AlbumArtView::paintEvent(event);
    if (!decoded_ || !image().isNull())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor pale = palette().color(QPalette::WindowText);
    pale.setAlpha(pale.alpha() / paleness);
    painter.setPen(Qt::NoPen);
    painter.setBrush(pale);
    painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
    painter.setOpacity(0.4);
    const int side = std::min(width(), height()) / 3;
    QRect place(0, 0, side, side);
    place.moveCenter(rect().center());
    Icons::symbol(QStringLiteral("note")).paint(&painter, place);
}
