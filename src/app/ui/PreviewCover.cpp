#include "app/ui/PreviewCover.h"

#include "app/ui/Icons.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr qreal cornerRadius = 4.0;
constexpr int paleness = 8;
constexpr qreal noteOpacity = 0.4;

} // namespace

PreviewCover::PreviewCover(QWidget* parent) : AlbumArtView(parent)
{
    setAccessibleName(tr("Cover art"));
    connect(this, &AlbumArtView::imageChanged, this, [this] {
        decoded_ = true;
        setAccessibleDescription(toolTip().isEmpty() ? tr("No Artwork") : toolTip());
    });
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
    const int side = std::min(width(), height()) / 3;
    QRect place(0, 0, side, side);
    place.moveCenter(rect().center());
    // As a whole: where its parts overlap, they would show through each other.
    painter.setOpacity(noteOpacity);
    painter.drawPixmap(place, Icons::symbol(QStringLiteral("note")).pixmap(place.size(), devicePixelRatioF()));
}
