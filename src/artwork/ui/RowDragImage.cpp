#include "artwork/ui/RowDragImage.h"

#include "model/AudioFile.h"
#include "model/Picture.h"
#include "tagengine/TaglibWrapper.h"

#include <QFileIconProvider>
#include <QMimeDatabase>
#include <QPainter>
#include <QWidget>

#include <cmath>

namespace {

/// Where the text starts, in multiples of its height.
constexpr qreal textStart = 1.4;
/// Larger art would hold up the drag.
constexpr qint64 mostPixels = 12'000'000;

QImage artOf(const AudioFile& record, int side)
{
    const QByteArray art = TaglibWrapper::getImageData(record.path, record.fileType).value_or(QByteArray());
    const QSize size = Picture::size(art);
    return qint64(size.width()) * size.height() <= mostPixels ? Picture::decode(art, {side, side}) : QImage();
}

QIcon iconForFileType(const QString& fileType)
{
    const auto type = QMimeDatabase().mimeTypeForFile(QStringLiteral("x.") + fileType, QMimeDatabase::MatchExtension);
    const QIcon themed = QIcon::fromTheme(type.iconName(), QIcon::fromTheme(type.genericIconName()));
    return themed.isNull() ? QFileIconProvider().icon(QFileIconProvider::File) : themed;
}

void drawIcon(QPainter& painter, const QRectF& place, const AudioFile& record, qreal scale)
{
    const QImage art = artOf(record, static_cast<int>(std::ceil(place.height() * scale)));
    if (art.isNull())
        iconForFileType(record.fileType).paint(&painter, place.toAlignedRect());
    else
        painter.drawImage(place, art);
}

} // namespace

QPixmap RowDragImage::draggingImageComponents(const AudioFile& record, const QWidget& list)
{
    const QFontMetricsF metrics(list.font());
    const qreal height = std::ceil(metrics.height());
    const qreal width = std::ceil(metrics.horizontalAdvance(record.fileName));
    const qreal scale = list.devicePixelRatioF();
    const QSizeF size(width + textStart * height, height);

    QPixmap pixmap((size * scale).toSize());
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawIcon(painter, {0, 0, height, height}, record, scale);
    painter.setFont(list.font());
    painter.setPen(list.palette().color(QPalette::Text));
    painter.drawText(QPointF(textStart * height, metrics.ascent()), record.fileName);
    return pixmap;
}
