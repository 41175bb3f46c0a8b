#include "artwork/ui/AlbumArtView.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr qreal cornerRadius = 4.0;
constexpr int preferredSide = 240;
constexpr int smallestSide = 120;

} // namespace

AlbumArtView::AlbumArtView(QWidget* parent) : QWidget(parent)
{
    setMinimumSize(smallestSide, smallestSide);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAccessibleName(tr("Cover art"));
}

void AlbumArtView::setArt(const QByteArray& bytes)
{
    if (bytes == bytes_)
        return;
    bytes_ = bytes;
    decode();
    setAccessibleDescription(showsArt() ? tr("Shows the cover art of the selection") : tr("No Artwork"));
}

QSize AlbumArtView::sizeHint() const
{
    return {preferredSide, preferredSide};
}

int AlbumArtView::heightForWidth(int width) const
{
    return std::clamp(width, smallestSide, preferredSide);
}

void AlbumArtView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (showsArt())
        paintArt(painter);
    else
        paintPlaceholder(painter);
}

void AlbumArtView::resizeEvent(QResizeEvent*)
{
    decode();
}

void AlbumArtView::decode()
{
    picture_ = QImage();
    if (!bytes_.isEmpty()) {
        QBuffer buffer(&bytes_);
        QImageReader reader(&buffer);
        reader.setAutoTransform(true);
        const QSize wanted = size() * devicePixelRatioF();
        const QSize stored = reader.size();
        if (stored.width() > wanted.width() || stored.height() > wanted.height())
            reader.setScaledSize(stored.scaled(wanted, Qt::KeepAspectRatio).expandedTo({1, 1}));
        picture_ = reader.read();
    }
    update();
}

void AlbumArtView::paintArt(QPainter& painter) const
{
    QRectF place(QPointF(), picture_.size().scaled(size(), Qt::KeepAspectRatio).toSizeF());
    place.moveCenter(QRectF(rect()).center());
    QPainterPath outline;
    outline.addRoundedRect(place, cornerRadius, cornerRadius);
    painter.setClipPath(outline);
    painter.drawImage(place, picture_);
}

void AlbumArtView::paintPlaceholder(QPainter& painter) const
{
    const int side = std::min(width(), height());
    QRectF place(0, 0, side, side);
    place.moveCenter(QRectF(rect()).center());
    const QColor colour =
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::PlaceholderText);
    QPen pen(colour, 1.5);
    pen.setDashPattern({5, 5});
    painter.setPen(pen);
    painter.drawRoundedRect(place.adjusted(1, 1, -1, -1), 2 * cornerRadius, 2 * cornerRadius);
    painter.drawText(place, Qt::AlignCenter, tr("No Artwork"));
}
